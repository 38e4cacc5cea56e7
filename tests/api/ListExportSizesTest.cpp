// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/ListExport.h"

#include "services/api/SampleData.h"
#include "services/notices/Progress.h"
#include "services/records/Dialect.h"
#include "tests/api/support/ListMaker.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"
#include "tests/tasks/support/PeakMemory.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

Q_DECLARE_METATYPE(ListExport::Format)

/// Lists far longer than anybody reads: memory stays small, and a sheet that cannot hold
/// them is refused before it is begun.
class ListExportSizesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aHundredThousandRowsInLittleMemory_data()
    {
        QTest::addColumn<ListExport::Format>("format");
        QTest::newRow("CSV") << ListExport::Format::Csv;
        QTest::newRow("XLSX") << ListExport::Format::Xlsx;
    }

    void aHundredThousandRowsInLittleMemory()
    {
        QFETCH(ListExport::Format, format);
        constexpr qint64 mebibyte = 1024 * 1024;
        TestInstallation home;
        generate(home, 100000);
        const QString path = home.path(QStringLiteral("list"));
        const PeakMemory memory;
        QVERIFY(memory.isKnown());
        QElapsedTimer clock;
        clock.start();
        const auto receipt =
            ListExport::flows(flowSearch("KoJobName", ""), flowColumns(), path, format);
        QVERIFY2(receipt, qPrintable(receipt.outcome.cause));
        qInfo("%d rows in %lld ms, %lld KiB, %lld MiB above the start", receipt.value.rows,
              static_cast<long long>(clock.elapsed()),
              static_cast<long long>(QFileInfo(path).size() / 1024),
              static_cast<long long>(memory.aboveStart() / mebibyte));
        QVERIFY(receipt.value.rows >= 100000);
        // The connection's own cache may take 32 MiB.
        QVERIFY(memory.aboveStart() < 64 * mebibyte);
    }

    void moreThanASheetHoldsIsRefusedBeforehand()
    {
        TestInstallation home;
        home.actAsAdmin();
        addBareFlows(home.database(), ListExport::mostSheetRows() + 1);
        const QString path = home.path(QStringLiteral("list"));
        const NoticeLog log;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("list.export")));
        const auto refused = ListExport::flows(flowSearch("KoJobName", ""), flowColumns(), path,
                                               ListExport::Format::Xlsx);
        QVERIFY(!refused);
        QVERIFY2(refused.text().contains(QStringLiteral("CSV")), qPrintable(refused.text()));
        QVERIFY(!QFileInfo::exists(path));
        QCOMPARE(log.notices.size(), 1);
    }

private:
    /// Flows without jobs, which no list but the longest needs.
    static void addBareFlows(Database &database, int count)
    {
        constexpr int minutes = 60000;
        database.dialect().setStatementTimeout(10 * minutes);
        database.run(QStringLiteral("PRAGMA foreign_keys = OFF"));
        database.run(QStringLiteral("INSERT INTO job_flows (guid, job_name, create_time) "
                                    "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 "
                                    "FROM n WHERE i < %1) "
                                    "SELECT 'g' || i, 'J' || i, '2026-01-01' FROM n")
                         .arg(count));
    }

    static void generate(TestInstallation &home, int flows)
    {
        home.actAsAdmin();
        NoProgress progress;
        SampleRequest request;
        request.flows = flows;
        const Outcome generated = SampleData::generate(request, progress);
        QVERIFY2(generated.ok, qPrintable(generated.text));
    }
};

KODMS_TEST_MAIN(ListExportSizesTest, QCoreApplication)
#include "ListExportSizesTest.moc"
