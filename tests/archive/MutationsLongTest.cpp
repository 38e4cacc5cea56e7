// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/archive/MutationRun.h"
#include "tests/support/TestMain.h"

#include <QLoggingCategory>
#include <QTest>

using KODMS::Tests::MutationRun;

/// The same as the short test, with a hundred thousand.
class MutationsLongTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("kodms.*.info=false")); }

    void damagedAtRandom_data()
    {
        QTest::addColumn<int>("mutations");
        for (int i = 0; i < 50; ++i)
            QTest::addRow("part %d", i) << 2000;
    }

    /// In parts, since a test function may take five minutes.
    void damagedAtRandom()
    {
        QFETCH(int, mutations);
        const QString wrong = m_mutations.run(mutations);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }

    void cleanupTestCase()
    {
        qInfo("%d refused, %d unpacked, the slowest took %.3f s", m_mutations.refused(),
              m_mutations.unpacked(), m_mutations.slowest());
        QCOMPARE(m_mutations.refused() + m_mutations.unpacked(), 100000);
        QVERIFY(m_mutations.unpacked() > 1000);
    }

private:
    MutationRun m_mutations{20261121};
};

KODMS_TEST_MAIN(MutationsLongTest, QCoreApplication)
#include "MutationsLongTest.moc"
