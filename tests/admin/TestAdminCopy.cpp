// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QJsonArray>
#include <QTest>

#include <memory>

using KODMS::Tests::AdminRun;
using KODMS::Tests::AdminSandbox;
using KODMS::Tests::PlainConnection;

/// Moving an installation, as whoever looks after it does.
class TestAdminCopy : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theCopyIsProvedAndWorks();
    void programsReadTheProof();
    void bothSidesHaveToBeNamed_data();
    void bothSidesHaveToBeNamed();
    void anInstallationAtWorkIsNoTarget();
    void aCancelledCopySaysWhatStands();
    void withoutATerminalEachTenthIsALine_data();
    void withoutATerminalEachTenthIsALine();

private:
    QStringList copyTo(const QString &target) const
    {
        return {QStringLiteral("copy"), QStringLiteral("--from"), m_sandbox->configPath(),
                QStringLiteral("--to"), target};
    }

    std::unique_ptr<AdminSandbox> m_sandbox;
    QString m_target;
};

void TestAdminCopy::init()
{
    m_sandbox = std::make_unique<AdminSandbox>();
    QCOMPARE(m_sandbox->init().code, 0);
    const QString archive =
        m_sandbox->makeArchive(QStringLiteral("in/board.tgz"), QByteArray(50000, 'c'));
    QCOMPARE(m_sandbox
                 ->run({QStringLiteral("intake"), archive, QStringLiteral("--customer"),
                        QStringLiteral("A1B")})
                 .code,
             0);
    // The configuration names no place of its own, so it serves a new one as it is.
    QFile ini(m_sandbox->configPath());
    QVERIFY(ini.open(QIODevice::ReadOnly));
    m_target = m_sandbox->write(QStringLiteral("second/kodms.ini"), ini.readAll());
}

void TestAdminCopy::theCopyIsProvedAndWorks()
{
    const AdminRun run = m_sandbox->run(copyTo(m_target));
    QVERIFY2(run.code == 0, run.all());
    QVERIFY2(run.output.contains("job_flows"), run.all());
    QVERIFY2(run.output.contains("1 files"), run.all());
    const QString secret =
        m_sandbox->queried(QStringLiteral("SELECT password_hash FROM users LIMIT 1"));
    QVERIFY(secret.startsWith(QLatin1Char('$')));
    QVERIFY2(!run.all().contains(secret.toUtf8()), run.all());
    const QStringList there{QStringLiteral("--config"), m_target};
    const AdminRun check = m_sandbox->runJson(there + QStringList{QStringLiteral("check")});
    QVERIFY2(check.code == 0, check.all());
    QCOMPARE(check.json()[QStringLiteral("filesRead")].toInt(), 1);
    const AdminRun users =
        m_sandbox->run(there + QStringList{QStringLiteral("user"), QStringLiteral("list")});
    QVERIFY2(users.output.contains(AdminSandbox::AdminLogin), users.all());
}

void TestAdminCopy::programsReadTheProof()
{
    const AdminRun run = m_sandbox->runJson(copyTo(m_target));
    QVERIFY2(run.code == 0, run.all());
    QCOMPARE(run.json()[QStringLiteral("files")].toInt(), 1);
    const QJsonArray tables = run.json()[QStringLiteral("tables")].toArray();
    bool flows = false;
    for (const QJsonValue &table : tables) {
        const QJsonObject proof = table.toObject();
        QCOMPARE(proof[QStringLiteral("sha256")].toString().size(), 64);
        if (proof[QStringLiteral("table")].toString() == QLatin1String("job_flows"))
            flows = proof[QStringLiteral("rows")].toInt() == 1;
    }
    QVERIFY2(flows, run.all());
}

void TestAdminCopy::bothSidesHaveToBeNamed_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("neither") << QStringList{};
    QTest::newRow("no target") << QStringList{QStringLiteral("--from"), QStringLiteral("a.ini")};
    QTest::newRow("no source") << QStringList{QStringLiteral("--to"), QStringLiteral("b.ini")};
    QTest::newRow("a third one") << QStringList{
        QStringLiteral("--config"), QStringLiteral("c.ini"), QStringLiteral("--from"),
        QStringLiteral("a.ini"),    QStringLiteral("--to"),  QStringLiteral("b.ini")};
}

void TestAdminCopy::bothSidesHaveToBeNamed()
{
    QFETCH(QStringList, arguments);
    const AdminRun run = m_sandbox->run(QStringList{QStringLiteral("copy")} + arguments);
    QVERIFY2(run.code == 2, run.all());
    QVERIFY2(run.errors.contains("--from"), run.all());
}

void TestAdminCopy::anInstallationAtWorkIsNoTarget()
{
    QVERIFY(m_sandbox->run(copyTo(m_target)).code == 0);
    const QStringList before = m_sandbox->filesBelow(QStringLiteral("second/data/store"));
    const AdminRun again = m_sandbox->run(copyTo(m_target));
    QVERIFY2(again.code == 1, again.all());
    QVERIFY2(again.errors.contains("never overwritten"), again.all());
    QCOMPARE(m_sandbox->filesBelow(QStringLiteral("second/data/store")), before);
    const AdminRun check =
        m_sandbox->run({QStringLiteral("--config"), m_target, QStringLiteral("check")});
    QVERIFY2(check.code == 0, check.all());
}

/// The copy waits for the target, which somebody else writes, until it was cancelled.
void TestAdminCopy::aCancelledCopySaysWhatStands()
{
    if (!AdminSandbox::hasTerminals())
        QSKIP("a program is not interrupted, nor asked at a terminal, here");
    const AdminRun made = m_sandbox->run(
        {QStringLiteral("--config"), m_target, QStringLiteral("init"), QStringLiteral("--login"),
         QStringLiteral("other"), QStringLiteral("--name"), QStringLiteral("别人"),
         QStringLiteral("--password-file"), QStringLiteral("-")},
        "another long password\n");
    QVERIFY2(made.code == 0, made.all());
    KODMS::Services::DatabaseSettings embedded;
    embedded.driver = QStringLiteral("sqlite");
    const QStringList files = m_sandbox->filesBelow(QStringLiteral("second"));
    for (const QString &line : files) {
        const QString file = line.left(line.lastIndexOf(QLatin1Char(' ')));
        if (file.endsWith(QLatin1String(".db")))
            embedded.path = file;
    }
    QVERIFY(QFile::exists(embedded.path));
    const PlainConnection writer(embedded);
    writer.run(QStringLiteral("BEGIN IMMEDIATE"));
    const AdminRun run = m_sandbox->runInterrupted(copyTo(m_target),
                                                   [&] { writer.run(QStringLiteral("ROLLBACK")); });
    QVERIFY2(run.code == 130, run.all());
    QVERIFY2(run.errors.contains("none of its records"), run.all());
    QVERIFY2(!run.errors.contains("half done"), run.all());
    QCOMPARE(writer.texts(QStringLiteral("SELECT login_name FROM users")),
             QStringList(QStringLiteral("other")));
    const AdminRun status =
        m_sandbox->run({QStringLiteral("--config"), m_target, QStringLiteral("status")});
    QVERIFY2(status.code == 1 && status.errors.contains("copy"), status.all());
    const AdminRun again = m_sandbox->run(copyTo(m_target));
    QVERIFY2(again.code == 0, again.all());
}

void TestAdminCopy::withoutATerminalEachTenthIsALine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("what");
    QTest::newRow("check") << QStringList{QStringLiteral("check")} << QByteArray("Checking");
    QTest::newRow("sample") << QStringList{QStringLiteral("sample"), QStringLiteral("--flows"),
                                           QStringLiteral("200")}
                            << QByteArray("Flows");
    QTest::newRow("copy") << QStringList() << QByteArray("Copying");
}

void TestAdminCopy::withoutATerminalEachTenthIsALine()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, what);
    if (what == "Copying")
        arguments = copyTo(m_target);
    const AdminSandbox fresh; // no sample goes beside real records
    QCOMPARE(fresh.init().code, 0);
    const AdminRun run = what == "Flows" ? fresh.runJson(arguments) : m_sandbox->runJson(arguments);
    QVERIFY2(run.code == 0, run.all());
    QVERIFY2(!run.json().isEmpty(), run.all());
    QVERIFY2(run.errors.contains(what + ": 100 % of "), run.all());
    int last = 0;
    QByteArrayList lines = QByteArray(run.errors).replace("\r\n", "\n").split('\n');
    QCOMPARE(lines.takeLast(), QByteArray());
    for (const QByteArray &line : qAsConst(lines)) {
        for (const char letter : line)
            QVERIFY2(letter < 0 || letter >= ' ', run.all());
        const int percent = line.mid(line.indexOf(": ") + 2).split(' ').first().toInt();
        QVERIFY2(percent >= 10 && percent / 10 != last / 10, run.all());
        last = percent == 100 ? 0 : percent;
    }
}

KODMS_TEST_MAIN(TestAdminCopy, QCoreApplication)
#include "TestAdminCopy.moc"
