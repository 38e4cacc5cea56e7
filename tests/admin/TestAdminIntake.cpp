// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTest>

using KODMS::Tests::AdminRun;
using KODMS::Tests::AdminSandbox;

/// Taking in what customers send, and paying for it. One installation for all tests.
class TestAdminIntake : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void takesInAnArchiveAndNamesTheJob();
    void takesInAFolder();
    void keepsChineseNamesWithoutALocale();
    void takesWhatTheOptionsSay();
    void refusesWhatCannotBeTaken_data();
    void refusesWhatCannotBeTaken();
    void aNameOfTwoLinesIsRefused();
    void aFileNameCannotWriteToTheTerminal();
    void aUserTakesInWithTheirOwnRights();
    void theAuditNamesWhoTookIt();
    void anOrderIsPaidOnce();
    void anIntakeCanBePaidAtOnce();
    void aCancelledIntakeLeavesNothing();

private:
    AdminRun intake(const QString &path, const char *customer, const QStringList &more = {},
                    const QByteArray &input = {}) const;
    AdminRun addUser(const char *login, const char *role) const;
    AdminRun intakeAs(const char *login, const QString &path, const char *customer) const;

    AdminSandbox m_sandbox;
};

void TestAdminIntake::initTestCase()
{
    const AdminRun run = m_sandbox.init();
    QVERIFY2(run.code == 0, run.all());
}

AdminRun TestAdminIntake::intake(const QString &path, const char *customer, const QStringList &more,
                                 const QByteArray &input) const
{
    return m_sandbox.runJson(QStringList{QStringLiteral("intake"), path,
                                         QStringLiteral("--customer"),
                                         QString::fromUtf8(customer)} +
                                 more,
                             input);
}

AdminRun TestAdminIntake::addUser(const char *login, const char *role) const
{
    return m_sandbox.run({QStringLiteral("user"), QStringLiteral("add"), QString::fromLatin1(login),
                          QStringLiteral("--name"), QStringLiteral("李静"),
                          QStringLiteral("--role"), QString::fromLatin1(role),
                          QStringLiteral("--password-file"), QStringLiteral("-")},
                         "a fine password\n");
}

AdminRun TestAdminIntake::intakeAs(const char *login, const QString &path,
                                   const char *customer) const
{
    return intake(path, customer,
                  {QStringLiteral("--login"), QString::fromLatin1(login),
                   QStringLiteral("--password-file"), QStringLiteral("-")},
                  "a fine password\n");
}

void TestAdminIntake::takesInAnArchiveAndNamesTheJob()
{
    const QString archive = m_sandbox.makeArchive(QStringLiteral("in/board.tgz"), "first");
    const AdminRun first = intake(archive, "A1B");
    QVERIFY2(first.code == 0, first.all());
    QCOMPARE(first.json()[QStringLiteral("job")].toString(), QStringLiteral("A1B000001"));
    QCOMPARE(first.json()[QStringLiteral("flowGuid")].toString().size(), 32);
    QVERIFY(first.json()[QStringLiteral("flowId")].toInt() > 0);
    const AdminRun second = intake(archive, "a1b"); // the code's case does not matter
    QVERIFY2(second.code == 0, second.all());
    QCOMPARE(second.json()[QStringLiteral("job")].toString().toUpper(),
             QStringLiteral("A1B000002"));
    QVERIFY(first.json()[QStringLiteral("storedName")] !=
            second.json()[QStringLiteral("storedName")]);
    QVERIFY(QFile::exists(archive)); // it is copied, not moved
}

void TestAdminIntake::takesInAFolder()
{
    m_sandbox.write(QStringLiteral("in/folder/a/1.gbr"), "copper");
    const AdminRun run = intake(m_sandbox.path(QStringLiteral("in/folder")), "F01");
    QVERIFY2(run.code == 0, run.all());
    QCOMPARE(run.json()[QStringLiteral("job")].toString(), QStringLiteral("F01000001"));
    QVERIFY(run.json()[QStringLiteral("storedName")].toString().endsWith(QStringLiteral(".zip")));
}

void TestAdminIntake::keepsChineseNamesWithoutALocale()
{
    AdminSandbox sandbox;
    sandbox.extraEnvironment = QStringList{QStringLiteral("LC_ALL=C"), QStringLiteral("LANG=C")};
    QCOMPARE(sandbox.init().code, 0);
    const QString archive = sandbox.makeArchive(QStringLiteral("in/主板 第二版.tgz"), "x");
    const AdminRun run = sandbox.runJson(
        {QStringLiteral("intake"), archive, QStringLiteral("--customer"), QStringLiteral("C01"),
         QStringLiteral("--customer-name"), QStringLiteral("深圳电子")});
    QVERIFY2(run.code == 0, run.all());
    QCOMPARE(sandbox.queried(QStringLiteral("SELECT OrigName FROM orig_file_view")),
             QStringLiteral("主板 第二版"));
    QCOMPARE(sandbox.queried(QStringLiteral("SELECT KoName FROM orig_file_view")),
             QStringLiteral("深圳电子"));
}

void TestAdminIntake::takesWhatTheOptionsSay()
{
    const QString archive = m_sandbox.makeArchive(QStringLiteral("in/options.tgz"), "x");
    const AdminRun run =
        intake(archive, "D01",
               {QStringLiteral("--orig-name"), QStringLiteral("客户 \"7\"; DROP TABLE jobs"),
                QStringLiteral("--tips"), QStringLiteral("100% ?_'")});
    QVERIFY2(run.code == 0, run.all());
    QCOMPARE(m_sandbox.queried(
                 QStringLiteral("SELECT OrigName FROM orig_file_view WHERE KoCode = 'D01'")),
             QStringLiteral("客户 \"7\"; DROP TABLE jobs"));
    QCOMPARE(m_sandbox.queried(
                 QStringLiteral("SELECT FileTips FROM orig_file_view WHERE KoCode = 'D01'")),
             QStringLiteral("100% ?_'"));
}

void TestAdminIntake::refusesWhatCannotBeTaken_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("customer");
    QTest::addColumn<QString>("named");
    const QString good =
        m_sandbox.makeArchive(QStringLiteral("in/good.tgz"), QByteArray(9999, 'x'));
    const QString missing = m_sandbox.path(QStringLiteral("in/none.tgz"));
    const QString text = m_sandbox.write(QStringLiteral("in/letter.tgz"), "Dear all,");
    const QString empty = m_sandbox.write(QStringLiteral("in/empty.tgz"), {});
    QFile whole(good);
    QVERIFY(whole.open(QIODevice::ReadOnly));
    const QString torn = m_sandbox.write(QStringLiteral("in/torn.tgz"), whole.read(60));
    const QString hollow = m_sandbox.path(QStringLiteral("in/hollow"));
    QVERIFY(QDir().mkpath(hollow));
    const QString code = QStringLiteral("X01");
    QTest::newRow("a file that is not there") << missing << code << QStringLiteral("none.tgz");
    QTest::newRow("a text with an archive's suffix") << text << code << QStringLiteral("letter");
    QTest::newRow("an empty file") << empty << code << QStringLiteral("empty.tgz");
    QTest::newRow("half an archive") << torn << code << QStringLiteral("torn.tgz");
    QTest::newRow("an empty folder") << hollow << code << QStringLiteral("hollow");
    QTest::newRow("a device") << QStringLiteral("/dev/null") << code << QStringLiteral("null");
    for (const char *bad : {"", "A", "ABCD", "A B", "A/B", "..."}) {
        QTest::newRow(
            qPrintable(QStringLiteral("the customer code \"%1\"").arg(QString::fromLatin1(bad))))
            << good << QString::fromLatin1(bad) << QString::fromLatin1(bad);
    }
    QTest::newRow("a Chinese customer code")
        << good << QStringLiteral("客户一") << QStringLiteral("客户一");
}

void TestAdminIntake::refusesWhatCannotBeTaken()
{
    QFETCH(QString, path);
    QFETCH(QString, customer);
    QFETCH(QString, named);
    const QString jobs = QStringLiteral("SELECT COUNT(*) FROM jobs");
    const QString before = m_sandbox.queried(jobs);
    const QStringList stored = m_sandbox.filesBelow(QStringLiteral("place/files"));
    const AdminRun run = intake(path, customer.toUtf8().constData());
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.json()[QStringLiteral("error")].toString().contains(named), run.all());
    QCOMPARE(m_sandbox.queried(jobs), before);
    QCOMPARE(m_sandbox.filesBelow(QStringLiteral("place/files")), stored);
}

void TestAdminIntake::aNameOfTwoLinesIsRefused()
{
    const QString archive = m_sandbox.makeArchive(QStringLiteral("in/lines.tgz"), "x");
    for (const char *option : {"--customer-name", "--orig-name", "--description", "--tips"}) {
        const AdminRun run =
            intake(archive, "N01", {QString::fromLatin1(option), QStringLiteral("first\nsecond")});
        QVERIFY2(run.code == 1, run.all());
        QVERIFY2(run.json()[QStringLiteral("error")].toString().contains(
                     QStringLiteral("control character")),
                 run.all());
    }
    QCOMPARE(m_sandbox.queried(QStringLiteral("SELECT COUNT(*) FROM customers WHERE code = 'N01'")),
             QStringLiteral("0"));
}

void TestAdminIntake::aFileNameCannotWriteToTheTerminal()
{
    const AdminRun run = m_sandbox.run(
        {QStringLiteral("intake"), m_sandbox.path(QStringLiteral("none\nJob A1B000009\u001b[2J")),
         QStringLiteral("--customer"), QStringLiteral("N01"), QStringLiteral("--verbose")});
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.errors.contains("none?Job A1B000009?[2J"), run.all());
    QVERIFY2(!run.errors.contains("\nJob") && !run.errors.contains('\x1b'), run.all());
}

void TestAdminIntake::aUserTakesInWithTheirOwnRights()
{
    QCOMPARE(addUser("entry", "orig-file-update").code, 0);
    QCOMPARE(addUser("viewer", "check-authority").code, 0);
    const QString archive = m_sandbox.makeArchive(QStringLiteral("in/rights.tgz"), "x");
    const AdminRun allowed = intakeAs("entry", archive, "R01");
    QVERIFY2(allowed.code == 0, allowed.all());
    const AdminRun refused = intakeAs("viewer", archive, "R01");
    QVERIFY2(refused.code == 1, refused.all());
    const AdminRun wrong = intake(archive, "R01",
                                  {QStringLiteral("--login"), QStringLiteral("entry"),
                                   QStringLiteral("--password-file"), QStringLiteral("-")},
                                  "a wrong password\n");
    QVERIFY2(wrong.code == 1, wrong.all());
    QCOMPARE(m_sandbox.queried(
                 QStringLiteral("SELECT COUNT(*) FROM orig_file_view WHERE KoCode = 'R01'")),
             QStringLiteral("1"));
}

void TestAdminIntake::theAuditNamesWhoTookIt()
{
    const QString who =
        QStringLiteral("SELECT COALESCE(u.login_name, 'operator') FROM events e "
                       "LEFT JOIN users u ON u.id = e.user_id "
                       "WHERE e.refused = 0 AND e.record_name LIKE '%1%' ORDER BY e.id LIMIT 1");
    QCOMPARE(m_sandbox.queried(who.arg(QStringLiteral("R01"))), QStringLiteral("entry"));
    QCOMPARE(m_sandbox.queried(who.arg(QStringLiteral("A1B"))), QStringLiteral("operator"));
    QVERIFY(
        !m_sandbox.queried(QStringLiteral("SELECT id FROM events WHERE record_name LIKE 'A1B%'"))
             .isEmpty());
}

void TestAdminIntake::anOrderIsPaidOnce()
{
    const QString archive = m_sandbox.makeArchive(QStringLiteral("in/web.tgz"), "x");
    QCOMPARE(intake(archive, "web").json()[QStringLiteral("job")].toString(),
             QStringLiteral("web000001"));
    const QString payment = QStringLiteral("SELECT payment FROM orders ORDER BY id DESC LIMIT 1");
    QCOMPARE(m_sandbox.queried(payment), QStringLiteral("0"));
    const QStringList pay{QStringLiteral("order"), QStringLiteral("pay"),
                          QStringLiteral("web000001")};
    for (int round = 0; round < 2; ++round) {
        const AdminRun run = m_sandbox.runJson(pay);
        QVERIFY2(run.code == 0, run.all());
        QVERIFY(m_sandbox.queried(payment) != QStringLiteral("0"));
    }
    const AdminRun none = m_sandbox.runJson(
        {QStringLiteral("order"), QStringLiteral("pay"), QStringLiteral("web999999")});
    QVERIFY2(none.code == 1, none.all());
    QVERIFY2(none.json()[QStringLiteral("error")].toString().contains(QStringLiteral("web999999")),
             none.all());
}

void TestAdminIntake::anIntakeCanBePaidAtOnce()
{
    const QString archive = m_sandbox.makeArchive(QStringLiteral("in/paid.tgz"), "x");
    QCOMPARE(intake(archive, "web", {QStringLiteral("--paid")}).code, 0);
    QVERIFY(m_sandbox.queried(QStringLiteral(
                "SELECT payment FROM orders ORDER BY id DESC LIMIT 1")) != QStringLiteral("0"));
}

void TestAdminIntake::aCancelledIntakeLeavesNothing()
{
    if (!AdminSandbox::hasTerminals())
        QSKIP("a program is not interrupted, nor asked at a terminal, here");
    // Zeros without end: packing them takes seconds, storing them takes no space.
    QFile large(m_sandbox.write(QStringLiteral("in/large/zeros"), "0"));
    QVERIFY(large.open(QIODevice::ReadWrite) && large.resize(Q_INT64_C(6) << 30));
    const QString jobs = QStringLiteral("SELECT COUNT(*) FROM jobs");
    const QString before = m_sandbox.queried(jobs);
    const QStringList stored = m_sandbox.filesBelow(QStringLiteral("place"));
    const AdminRun run = m_sandbox.runAndInterrupt(
        {QStringLiteral("intake"), m_sandbox.path(QStringLiteral("in/large")),
         QStringLiteral("--customer"), QStringLiteral("L01")},
        700);
    QVERIFY2(run.code == 130, run.all());
    QVERIFY(large.remove());
    QCOMPARE(m_sandbox.queried(jobs), before);
    QCOMPARE(m_sandbox.filesBelow(QStringLiteral("place")), stored);
}

KODMS_TEST_MAIN(TestAdminIntake, QCoreApplication)
#include "TestAdminIntake.moc"
