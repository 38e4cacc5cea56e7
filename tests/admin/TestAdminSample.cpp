// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"
#include "tests/support/TestMain.h"

#include <QTest>

using KODMS::Tests::AdminRun;
using KODMS::Tests::AdminSandbox;

/// Generated records.
class TestAdminSample : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void addsFlowsAndStaysClean();
    void statusTellsOfTheIndexOverThem();
    void theSameSeedGivesTheSameRecords();
    void storesFilesWhenAsked();
    void refusesAnInstallationWithRealWork();
    void aCancelledSampleAddsNothing();
};

void TestAdminSample::addsFlowsAndStaysClean()
{
    const AdminSandbox sandbox;
    QCOMPARE(sandbox.init().code, 0);
    const AdminRun run = sandbox.runJson(
        {QStringLiteral("sample"), QStringLiteral("--flows"), QStringLiteral("500")});
    QVERIFY2(run.code == 0, run.all());
    QCOMPARE(run.json()[QStringLiteral("flows")].toInt(), 500);
    QCOMPARE(sandbox.queried(QStringLiteral("SELECT COUNT(*) FROM job_flows")),
             QStringLiteral("500"));
    const AdminRun check = sandbox.runJson({QStringLiteral("check")});
    QVERIFY2(check.code == 0, check.all());
}

void TestAdminSample::statusTellsOfTheIndexOverThem()
{
    const AdminSandbox sandbox;
    QCOMPARE(sandbox.init().code, 0);
    QCOMPARE(
        sandbox.run({QStringLiteral("sample"), QStringLiteral("--flows"), QStringLiteral("40")})
            .code,
        0);
    const QString files = sandbox.queried(QStringLiteral("SELECT COUNT(*) FROM job_compress"));
    const AdminRun lines = sandbox.run({QStringLiteral("status")});
    QVERIFY2(lines.code == 0, lines.all());
    QVERIFY2(
        lines.output.contains("search index   40 flows, " + files.toUtf8() + " original files, "),
        lines.all());
    const AdminRun run = sandbox.runJson({QStringLiteral("status")});
    const QJsonObject index = run.json()[QStringLiteral("searchIndex")].toObject();
    QCOMPARE(index[QStringLiteral("ready")], QJsonValue(true));
    QCOMPARE(index[QStringLiteral("flows")], QJsonValue(40));
    QCOMPARE(index[QStringLiteral("originalFiles")].toInt(), files.toInt());
    QVERIFY2(files.toInt() > 0, run.all());
}

void TestAdminSample::theSameSeedGivesTheSameRecords()
{
    const auto names = [](const char *seed) {
        const AdminSandbox sandbox;
        sandbox.init();
        sandbox.run({QStringLiteral("sample"), QStringLiteral("--flows"), QStringLiteral("60"),
                     QStringLiteral("--seed"), QString::fromLatin1(seed)});
        return sandbox.column(
            QStringLiteral("SELECT KoJobName || Flow_OrigJobName FROM flow_view ORDER BY Flow_Id"));
    };
    const QStringList first = names("7");
    QVERIFY(!first.isEmpty());
    QCOMPARE(names("7"), first);
    QVERIFY(names("8") != first);
}

void TestAdminSample::storesFilesWhenAsked()
{
    const AdminSandbox sandbox;
    QCOMPARE(sandbox.init().code, 0);
    const AdminRun run = sandbox.runJson({QStringLiteral("sample"), QStringLiteral("--flows"),
                                          QStringLiteral("20"), QStringLiteral("--files")});
    QVERIFY2(run.code == 0, run.all());
    const AdminRun check = sandbox.runJson({QStringLiteral("check")});
    QVERIFY2(check.code == 0, check.all());
    QVERIFY2(check.json()[QStringLiteral("files")].toInt() >= 20, check.all());
    QCOMPARE(check.json()[QStringLiteral("sampleRecords")].toInt(), 0);
}

void TestAdminSample::refusesAnInstallationWithRealWork()
{
    const AdminSandbox sandbox;
    QCOMPARE(sandbox.init().code, 0);
    const QString archive = sandbox.makeArchive(QStringLiteral("in/board.tgz"), "copper");
    QCOMPARE(sandbox
                 .run({QStringLiteral("intake"), archive, QStringLiteral("--customer"),
                       QStringLiteral("A1B")})
                 .code,
             0);
    const AdminRun run =
        sandbox.runJson({QStringLiteral("sample"), QStringLiteral("--flows"), QStringLiteral("5")});
    QVERIFY2(run.code == 1, run.all());
    QCOMPARE(sandbox.queried(QStringLiteral("SELECT COUNT(*) FROM job_flows")),
             QStringLiteral("1"));
}

void TestAdminSample::aCancelledSampleAddsNothing()
{
    if (!AdminSandbox::hasTerminals())
        QSKIP("a program is not interrupted, nor asked at a terminal, here");
    const AdminSandbox sandbox;
    QCOMPARE(sandbox.init().code, 0);
    const AdminRun run = sandbox.runAndInterrupt(
        {QStringLiteral("sample"), QStringLiteral("--flows"), QStringLiteral("2000000")}, 700);
    QVERIFY2(run.code == 130, run.all());
    QCOMPARE(sandbox.queried(QStringLiteral("SELECT COUNT(*) FROM job_flows")),
             QStringLiteral("0"));
}

KODMS_TEST_MAIN(TestAdminSample, QCoreApplication)
#include "TestAdminSample.moc"
