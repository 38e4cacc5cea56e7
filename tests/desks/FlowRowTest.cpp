// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/FlowRow.h"

#include "desks/common/JobColumns.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QTest>

using namespace KODMS::UI;
using KODMS::DataLib::Model::Odbpp_Flow_View;

class FlowRowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyColumnHasItsHeader();
    void everyColumnShowsItsField();
    void theLatestUploadIsTheOneThatTheRecordNames_data();
    void theLatestUploadIsTheOneThatTheRecordNames();
    void anEmptyRecordGivesZerosAndEmptyTexts();
    void theStatusCellFollowsTheStatusPair();
};

void FlowRowTest::everyColumnHasItsHeader()
{
    QCOMPARE(
        flowHeaders().join(QLatin1Char('\n')),
        QStringLiteral("Id\n料号名称\n原始料名\n最新上传时间\n板层\nfeature数\n状态\n"
                       "前处理审核时间\nFGuid\n前处理人\n前处理审核人\n审核人ID\n料号管理备注\n"
                       "uuid\n是否web端\norder表suffix\npro_origfiles表suffix\n批号"));
    QCOMPARE(flowHeaders().at(JobColumn::BatchNumber), QStringLiteral("批号"));
    QCOMPARE(int(JobColumn::Count), 18);
}

void FlowRowTest::everyColumnShowsItsField()
{
    Odbpp_Flow_View flow;
    flow.id = 11;
    flow.jobName = "A1B000001";
    flow.origJobName = "主板";
    flow.origUploadTime = "2026-01-01 08:00:00";
    flow.odbppUploadTime = "2026-01-02 08:00:00";
    flow.layerCount = 8;
    flow.featureCount = 123456789;
    flow.flowStatus = 1;
    flow.checkFlag = 2;
    flow.preCheckTime = "2026-01-03 08:00:00";
    flow.flowGuid = "f00d";
    flow.preUserRealName = "王芳";
    flow.preCheckUserRealName = "李强";
    flow.preCheckUserId = 77;
    flow.tips = "急单";
    flow.uuid = "abc.tgz";
    flow.webFlag = 1;
    flow.orderSuffix = "zip";
    flow.origFileSuffix = "tgz";
    flow.batchNumber = 20260101;
    QCOMPARE(QStringList(flowRow(flow)).join(QLatin1Char('\n')),
             QStringLiteral("11\nA1B000001\n主板\n2026-01-01 08:00:00\n8\n123456789\n"
                            "前处理通过|green\n2026-01-03 08:00:00\nf00d\n王芳\n李强\n77\n急单\n"
                            "abc.tgz\n1\nzip\ntgz\n20260101"));
}

void FlowRowTest::theLatestUploadIsTheOneThatTheRecordNames_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<QString>("shown");
    QTest::newRow("no ODB++ job yet") << 0 << "original";
    QTest::newRow("ODB++ job uploaded") << 1 << "odbpp";
    QTest::newRow("a flag that says neither") << 2 << "original";
}

void FlowRowTest::theLatestUploadIsTheOneThatTheRecordNames()
{
    QFETCH(int, flag);
    Odbpp_Flow_View flow;
    flow.origUploadTime = "original";
    flow.odbppUploadTime = "odbpp";
    flow.odbppUploaded = flag;
    QTEST(flowRow(flow).at(JobColumn::UploadTime), "shown");
}

void FlowRowTest::anEmptyRecordGivesZerosAndEmptyTexts()
{
    const QStringList row = flowRow(Odbpp_Flow_View());
    QCOMPARE(row.join(QLatin1Char(',')), QStringLiteral("0,,,,0,0,待前处理|white,,,,,0,,,0,,,0"));
}

void FlowRowTest::theStatusCellFollowsTheStatusPair()
{
    Odbpp_Flow_View flow;
    flow.flowStatus = 3;
    QCOMPARE(flowRow(flow).at(JobColumn::Status), QStringLiteral("未知"));
    flow.checkFlag = 2;
    QCOMPARE(flowRow(flow).at(JobColumn::Status), QStringLiteral("流程完成|dg"));
}

KODMS_TEST_MAIN(FlowRowTest, QCoreApplication)
#include "FlowRowTest.moc"
