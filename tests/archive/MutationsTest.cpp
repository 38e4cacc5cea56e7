// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/archive/MutationRun.h"
#include "tests/support/TestMain.h"

#include <QLoggingCategory>
#include <QTest>

using KODMS::Tests::MutationRun;

/// Whatever damage does to an archive: nothing outside the target, no crash, no hang,
/// nothing left behind.
class MutationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void damagedAtRandom()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("kodms.*.info=false"));
        MutationRun mutations(20261121);
        const QString wrong = mutations.run(2000);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        qInfo("%d refused, %d unpacked, the slowest took %.3f s", mutations.refused(),
              mutations.unpacked(), mutations.slowest());
        QVERIFY(mutations.refused() > 2000 / 4);
        QVERIFY(mutations.unpacked() > 2000 / 100);
    }
};

KODMS_TEST_MAIN(MutationsTest, QCoreApplication)
#include "MutationsTest.moc"
