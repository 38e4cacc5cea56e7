// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/ShownRecords.h"
#include "tests/records/support/RandomRecords.h"
#include "tests/records/support/ViewFixture.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

#include <stdexcept>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

class Memory final : public ShownRecords {
public:
    void shown(const ShownRow &row) override { rows << row; }

    QVector<ShownRow> rows;
};

class Forgetful final : public ShownRecords {
public:
    void shown(const ShownRow &) override { throw std::runtime_error("no memory left"); }
};

} // namespace

/// What the two views show: every field of their rows, what may be seen by whom,
/// and what was shown.
class TestViewRows : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aNewFlowShowsItsOriginalFile();
    void aFlowShowsEveryField();
    void theLastImportedFileGoesBeforeTheOriginal();
    void theWebFlagFollowsTheJobName_data();
    void theWebFlagFollowsTheJobName();
    void anOriginalFileShowsEveryField();
    void timesAreShownInLocalTime();
    void shownRowsAreRemembered();
    void noExceptionLeavesASearch();
    void anOrdinaryUserSeesOwnFlowsOnly_data();
    void anOrdinaryUserSeesOwnFlowsOnly();
    void originalFilesAreShownToTheirExecutor();
    void aListCannotWidenTheScope();
    void nobodySeesNothing();
    void withoutADatabaseSearchesFail();
    void aFailingDatabaseClearsTheResults();
};

void TestViewRows::aNewFlowShowsItsOriginalFile()
{
    ViewFixture fixture;
    fixture.addFlow(7, QStringLiteral("A1B000007"));
    QVERIFY(fixture.searchFlows({condition("KoJobName", "", true)}));
    QCOMPARE(fixture.total, 1);
    const auto &row = fixture.flows.at(0);
    QCOMPARE(row.id, 7);
    QCOMPARE(row.jobName, std::string("A1B000007"));
    QCOMPARE(row.origJobName, std::string());
    QCOMPARE(row.uuid, std::string("stored7.tgz"));
    QCOMPARE(row.origFileSuffix, std::string("tgz"));
    QCOMPARE(row.odbppUploaded, 0);
    QCOMPARE(row.preUserRealName, std::string());
    QCOMPARE(row.preCheckUserId, 0);
    QCOMPARE(row.preCheckTime, std::string());
}

void TestViewRows::aFlowShowsEveryField()
{
    ViewFixture fixture;
    fixture.addUser(2, QStringLiteral("李伟"));
    fixture.addUser(3, QStringLiteral("王芳"));
    fixture.addFlow(1, QStringLiteral("A1B000001"));
    fixture.assign("orig_file_assign", 1, 2);
    fixture.assign("pre_check_assign", 1, 3);
    insertRow(fixture.database(), "orders",
              {{QStringLiteral("flow_id"), 1},
               {QStringLiteral("suffix"), QStringLiteral("rar")},
               {QStringLiteral("create_time"), QStringLiteral("t")}});
    fixture.set("jobs", 1, "layer_count", 12);
    fixture.set("jobs", 1, "feature_count", 3456);
    fixture.set("job_flows", 1, "orig_job_name", QStringLiteral("board-v2"));
    fixture.set("job_flows", 1, "flow_status", 2);
    fixture.set("job_flows", 1, "check_flag", 1);
    fixture.set("job_flows", 1, "tips", QStringLiteral("加急"));
    fixture.set("job_flows", 1, "batch_number", 99);
    fixture.set("job_flows", 1, "check_time", QStringLiteral("2026-11-21T01:02:03.004Z"));
    QVERIFY(fixture.searchFlows({condition("Flow_Id", "1", false)}));
    const auto &row = fixture.flows.at(0);
    QCOMPARE(row.layerCount, 12);
    QCOMPARE(row.featureCount, 3456);
    QCOMPARE(row.origJobName, std::string("board-v2"));
    QCOMPARE(row.flowStatus, 2);
    QCOMPARE(row.checkFlag, 1);
    QCOMPARE(QString::fromStdString(row.tips), QStringLiteral("加急"));
    QCOMPARE(row.batchNumber, 99);
    QCOMPARE(row.preCheckTime, std::string("2026-11-21 09:02:03"));
    QCOMPARE(QString::fromStdString(row.preUserRealName), QStringLiteral("李伟"));
    QCOMPARE(QString::fromStdString(row.preCheckUserRealName), QStringLiteral("王芳"));
    QCOMPARE(row.preCheckUserId, 3);
    QCOMPARE(row.orderSuffix, std::string("rar"));
    QCOMPARE(row.flowGuid, std::string("00000000000000000000000000000001"));
    QCOMPARE(row.origUploadTime, std::string("2026-11-01 08:00:01"));
}

void TestViewRows::theLastImportedFileGoesBeforeTheOriginal()
{
    ViewFixture fixture;
    fixture.addFlow(1, QStringLiteral("A1B000001"));
    insertRow(fixture.database(), "orig_files",
              {{QStringLiteral("id"), 50},
               {QStringLiteral("guid"), QStringLiteral("g50")},
               {QStringLiteral("stored_name"), QStringLiteral("folder.zip")},
               {QStringLiteral("file_type"), QString()},
               {QStringLiteral("create_time"), QStringLiteral("t")}});
    fixture.set("job_flows", 1, "last_import_file_id", 50);
    fixture.set("job_flows", 1, "last_import_time", QStringLiteral("2026-11-21T16:00:00.000Z"));
    QVERIFY(fixture.searchFlows({condition("KoJobName", "", true)}));
    QCOMPARE(fixture.flows.at(0).uuid, std::string("folder.zip"));
    QCOMPARE(fixture.flows.at(0).origFileSuffix, std::string()); // it was a folder
    QCOMPARE(fixture.flows.at(0).odbppUploaded, 1);
    QCOMPARE(fixture.flows.at(0).odbppUploadTime, std::string("2026-11-22 00:00:00"));
}

void TestViewRows::theWebFlagFollowsTheJobName_data()
{
    QTest::addColumn<QString>("jobName");
    QTest::addColumn<int>("flag");
    QTest::newRow("lower case") << QStringLiteral("web000001") << 1;
    QTest::newRow("upper case") << QStringLiteral("WEB000001") << 1;
    QTest::newRow("mixed case") << QStringLiteral("wEb000001") << 1;
    QTest::newRow("in the middle") << QStringLiteral("Aweb00001") << 0;
    QTest::newRow("another customer") << QStringLiteral("A1B000001") << 0;
}

void TestViewRows::theWebFlagFollowsTheJobName()
{
    QFETCH(QString, jobName);
    QFETCH(int, flag);
    ViewFixture fixture;
    fixture.addFlow(1, jobName);
    QVERIFY(fixture.searchFlows({condition("KoJobName", "", true)}));
    QCOMPARE(fixture.flows.at(0).webFlag, flag);
}

void TestViewRows::anOriginalFileShowsEveryField()
{
    ViewFixture fixture;
    fixture.addUser(2, QStringLiteral("李伟"));
    fixture.addFlow(23, QStringLiteral("A1B000023"), QStringLiteral("主板_v3"));
    fixture.assign("orig_file_assign", 23, 2);
    fixture.set("job_compress", 23, "description", QStringLiteral("四层"));
    fixture.set("job_compress", 23, "tips", QStringLiteral("邮件"));
    fixture.set("job_compress", 23, "update_time", QStringLiteral("2026-11-20T20:00:00.000Z"));
    QVERIFY(fixture.searchOrigFiles({condition("OrigName", "", true)}));
    QCOMPARE(fixture.total, 1);
    const auto &row = fixture.origFiles.at(0);
    QCOMPARE(QString::fromStdString(row.origName), QStringLiteral("主板_v3"));
    QCOMPARE(QString::fromStdString(row.koName), QStringLiteral("深圳华信电子"));
    QCOMPARE(row.koCode, std::string("A1B"));
    QCOMPARE(row.fileType, std::string("tgz"));
    QCOMPARE(row.jobSerialNumber, 23);
    QCOMPARE(row.uuid, std::string("stored23.tgz"));
    QCOMPARE(row.id, 23);
    QCOMPARE(QString::fromStdString(row.fileDescription), QStringLiteral("四层"));
    QCOMPARE(QString::fromStdString(row.fileTips), QStringLiteral("邮件"));
    QCOMPARE(row.flowGuid, std::string("00000000000000000000000000000017"));
    QCOMPARE(QString::fromStdString(row.superiorCo1), QStringLiteral("华信集团"));
    QCOMPARE(QString::fromStdString(row.superiorCo2), QStringLiteral("深圳分公司"));
    QCOMPARE(row.updateTime, std::string("2026-11-21 04:00:00"));
    QCOMPARE(row.createTime, std::string("2026-11-01 08:00:23"));
    QCOMPARE(QString::fromStdString(row.preUserRealName), QStringLiteral("李伟"));
    QCOMPARE(row.preUserId, 2);
}

void TestViewRows::timesAreShownInLocalTime()
{
    // The tests run eight hours east of Greenwich.
    ViewFixture fixture;
    fixture.addFlow(1, QStringLiteral("A1B000001"));
    fixture.set("job_compress", 1, "create_time", QStringLiteral("not a time"));
    QVERIFY(fixture.searchOrigFiles({condition("OrigName", "", true)}));
    QCOMPARE(fixture.origFiles.at(0).createTime, std::string("not a time"));
    QCOMPARE(fixture.origFiles.at(0).updateTime, std::string("2026-11-01 08:00:01"));
}

void TestViewRows::shownRowsAreRemembered()
{
    ViewFixture fixture;
    fixture.addFlow(4, QStringLiteral("A1B000004"));
    fixture.addFlow(5, QStringLiteral("A1B000005"));
    fixture.set("job_flows", 4, "state_version", 3);
    fixture.set("job_flows", 4, "file_version", 4);
    fixture.set("job_flows", 4, "assignment_version", 5);
    fixture.set("job_flows", 4, "remark_version", 6);
    Memory memory;
    fixture.context().setShownRecords(&memory);
    QVERIFY(fixture.searchFlows({condition("Flow_Id", "4", false)}));
    QVERIFY(fixture.searchOrigFiles({condition("OrigFile_Id", "4", false)}));
    QCOMPARE(memory.rows.size(), 2);
    QCOMPARE(memory.rows.at(0).view, ShownRow::View::Flow);
    QCOMPARE(memory.rows.at(1).view, ShownRow::View::OrigFile);
    QCOMPARE(memory.rows.at(0).jobName, QStringLiteral("A1B000004"));
    QCOMPARE(memory.rows.at(1).jobName, QString()); // of which that desk shows the parts alone
    for (const ShownRow &row : qAsConst(memory.rows)) {
        QCOMPARE(row.rowId, 4);
        QCOMPARE(row.flowId, 4);
        QCOMPARE(row.flowGuid, QStringLiteral("00000000000000000000000000000004"));
        QCOMPARE(row.versions.state, 3);
        QCOMPARE(row.versions.file, 4);
        QCOMPARE(row.versions.assignment, 5);
        QCOMPARE(row.versions.remark, 6);
    }
}

void TestViewRows::noExceptionLeavesASearch()
{
    ViewFixture fixture;
    fixture.addFlow(4, QStringLiteral("A1B000004"));
    Forgetful memory;
    fixture.context().setShownRecords(&memory);
    const QRegularExpression line(QStringLiteral("^search .*no memory left"));
    QTest::ignoreMessage(QtWarningMsg, line);
    QVERIFY(!fixture.searchFlows({condition("KoJobName", "", true)}));
    QVERIFY(fixture.flows.empty());
    QCOMPARE(fixture.total, 0);
    QTest::ignoreMessage(QtWarningMsg, line);
    QVERIFY(!fixture.searchOrigFiles({condition("KoName", "", true)}));
    QVERIFY(fixture.origFiles.empty());
    fixture.context().setShownRecords(nullptr);
    QVERIFY(fixture.searchFlows({condition("KoJobName", "", true)}));
    QCOMPARE(fixture.total, 1);
}

void TestViewRows::anOrdinaryUserSeesOwnFlowsOnly_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("column");
    QTest::newRow("created the flow") << "job_flows"
                                      << "create_user_id";
    QTest::newRow("imported the job") << "job_flows"
                                      << "last_import_user_id";
    QTest::newRow("created the job") << "jobs"
                                     << "create_user_id";
    QTest::newRow("is the executor") << "orig_file_assign" << QString();
    QTest::newRow("is the pre-checker") << "pre_check_assign" << QString();
}

void TestViewRows::anOrdinaryUserSeesOwnFlowsOnly()
{
    QFETCH(QString, table);
    QFETCH(QString, column);
    ViewFixture fixture;
    fixture.addUser(2, QStringLiteral("李伟"));
    fixture.addFlow(1, QStringLiteral("A1B000001"));
    fixture.addFlow(2, QStringLiteral("A1B000002"));
    if (column.isEmpty())
        fixture.assign(table.toLatin1().constData(), 2, 2);
    else
        fixture.set(table.toLatin1().constData(), 2, column.toLatin1().constData(), 2);
    fixture.actAs(2, {Role::PreProcess, Role::CheckAuthority, Role::ShowCompanyName});
    QVERIFY(fixture.searchFlows({condition("KoJobName", "", true)}));
    QCOMPARE(fixture.flowIds(), QVector<int>{2});
    QCOMPARE(fixture.total, 1);
    fixture.actAs(2, {Role::TestAdmin});
    QVERIFY(fixture.searchFlows({condition("KoJobName", "", true)}));
    QCOMPARE(fixture.total, 2);
}

void TestViewRows::originalFilesAreShownToTheirExecutor()
{
    ViewFixture fixture;
    fixture.addUser(2, QStringLiteral("李伟"));
    for (int id = 1; id <= 3; ++id)
        fixture.addFlow(id, QStringLiteral("A1B00000%1").arg(id));
    fixture.assign("orig_file_assign", 3, 2);
    fixture.assign("pre_check_assign", 1, 2);
    fixture.actAs(2, {Role::OrigFileUpdate, Role::OrigFileAssign});
    QVERIFY(fixture.searchOrigFiles({condition("OrigName", "", true)}));
    QCOMPARE(fixture.origFileIds(), QVector<int>{3});
    for (const Role role : {Role::Admin, Role::TestAdmin, Role::ShowCompanyName}) {
        fixture.actAs(2, {role});
        QVERIFY(fixture.searchOrigFiles({condition("OrigName", "", true)}));
        QCOMPARE(fixture.total, 3);
    }
}

void TestViewRows::aListCannotWidenTheScope()
{
    ViewFixture fixture;
    fixture.addUser(2, QStringLiteral("李伟"));
    fixture.addFlow(1, QStringLiteral("A1B000001"));
    fixture.actAs(2, {});
    auto others = condition("Flow_CreateUserId", "1", false);
    others.orWithPrevious = 1;
    QVERIFY(fixture.searchFlows({condition("KoJobName", "", true), others}));
    QCOMPARE(fixture.total, 0);
    QVERIFY(fixture.flows.empty());
}

void TestViewRows::nobodySeesNothing()
{
    ViewFixture fixture;
    fixture.addFlow(1, QStringLiteral("A1B000001"));
    fixture.context().setActor({});
    QVERIFY(fixture.searchFlows({condition("KoJobName", "", true)}));
    QCOMPARE(fixture.total, 0);
    QVERIFY(fixture.searchOrigFiles({condition("OrigName", "", true)}));
    QCOMPARE(fixture.total, 0);
}

void TestViewRows::withoutADatabaseSearchesFail()
{
    ViewFixture fixture;
    fixture.addFlow(1, QStringLiteral("A1B000001"));
    QVERIFY(fixture.searchFlows({condition("KoJobName", "", true)}));
    RecordContext::setCurrent(nullptr);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no database is open")));
    QVERIFY(!fixture.searchFlows({condition("KoJobName", "", true)}));
    QCOMPARE(fixture.total, 0);
    QVERIFY(fixture.flows.empty());
}

void TestViewRows::aFailingDatabaseClearsTheResults()
{
    ViewFixture fixture;
    fixture.addFlow(1, QStringLiteral("A1B000001"));
    QVERIFY(fixture.searchOrigFiles({condition("OrigName", "", true)}));
    fixture.database().run(QStringLiteral("DROP VIEW orig_file_view"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("orig_file_view")));
    QVERIFY(!fixture.searchOrigFiles({condition("OrigName", "", true)}));
    QCOMPARE(fixture.total, 0);
    QVERIFY(fixture.origFiles.empty());
    QVERIFY(fixture.searchFlows({condition("KoJobName", "", true)})); // the connection still works
    QCOMPARE(fixture.total, 1);
}

KODMS_TEST_MAIN(TestViewRows, QCoreApplication)
#include "TestViewRows.moc"
