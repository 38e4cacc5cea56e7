// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tables/TableFile.h"
#include "services/tables/XlsxFile.h"
#include "tests/support/TestMain.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;

/// As many rows as a sheet holds, and one more.
class SheetLimitTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void theLastRowFitsAndTheNextIsRefused()
    {
        const QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("list.xlsx"));
        const auto file =
            TableFile::create(path, TableFile::Format::Xlsx, {{QStringLiteral("n"), 0, true}});
        QVERIFY(file);
        for (int i = 0; i < XlsxFile::MostRows; ++i)
            QVERIFY(file.value->addRow({QString::number(i)}));
        const Outcome tooMany = file.value->addRow({QStringLiteral("x")});
        QVERIFY(!tooMany.ok);
        QVERIFY(tooMany.text.contains(QStringLiteral("1048575")));
        const Outcome published = file.value->publish(); // reads every row again
        QVERIFY2(published.ok, qPrintable(published.cause));
        QVERIFY(QFileInfo(path).size() > 1000000);
    }
};

KODMS_TEST_MAIN(SheetLimitTest, QCoreApplication)
#include "SheetLimitTest.moc"
