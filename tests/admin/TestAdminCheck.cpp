// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QJsonArray>
#include <QTest>

using KODMS::Tests::AdminRun;
using KODMS::Tests::AdminSandbox;
using KODMS::Tests::TestDatabase;

/// `check` on an installation that something happened to.
class TestAdminCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aFreshInstallationIsClean();
    void findsAFileThatIsGone();
    void findsAFileThatWasChanged();
    void aQuickCheckDoesNotReadTheFiles();
    void findsAFileThatNoRecordNames();
    void notesAPathWithoutItsSeparator();
    void refusesADamagedDatabase();

private:
    AdminRun check(const QStringList &more = {}) const;
    QString bodyOf(const QString &storedName) const;
    static QStringList problems(const AdminRun &run);

    std::unique_ptr<AdminSandbox> m_sandbox;
    QString m_storedName;
};

void TestAdminCheck::init()
{
    m_sandbox = std::make_unique<AdminSandbox>();
    QCOMPARE(m_sandbox->init().code, 0);
    const QString archive = m_sandbox->makeArchive(QStringLiteral("in/board.tgz"), "copper");
    const AdminRun run = m_sandbox->runJson(
        {QStringLiteral("intake"), archive, QStringLiteral("--customer"), QStringLiteral("A1B")});
    QVERIFY2(run.code == 0, run.all());
    m_storedName = run.json()[QStringLiteral("storedName")].toString();
    QVERIFY(!m_storedName.isEmpty());
}

AdminRun TestAdminCheck::check(const QStringList &more) const
{
    return m_sandbox->runJson(QStringList{QStringLiteral("check")} + more);
}

/// The store keeps a file in a folder of its name.
QString TestAdminCheck::bodyOf(const QString &storedName) const
{
    const QStringList files = m_sandbox->filesBelow(QStringLiteral("place/files"));
    for (const QString &line : files) {
        if (line.contains(QLatin1Char('/') + storedName + QLatin1Char('/')))
            return line.left(line.lastIndexOf(QLatin1Char(' ')));
    }
    return {};
}

QStringList TestAdminCheck::problems(const AdminRun &run)
{
    QStringList kinds;
    const QJsonArray findings = run.json()[QStringLiteral("findings")].toArray();
    for (const auto &finding : findings) {
        if (finding.toObject()[QStringLiteral("problem")].toBool() &&
            !finding.toObject()[QStringLiteral("repaired")].toBool())
            kinds << finding.toObject()[QStringLiteral("kind")].toString();
    }
    return kinds;
}

void TestAdminCheck::aFreshInstallationIsClean()
{
    const AdminRun run = check();
    QVERIFY2(run.code == 0, run.all());
    QCOMPARE(run.json()[QStringLiteral("clean")], QJsonValue(true));
    QCOMPARE(run.json()[QStringLiteral("records")].toInt(), 1);
    QCOMPARE(run.json()[QStringLiteral("files")].toInt(), 1);
    QCOMPARE(run.json()[QStringLiteral("filesRead")].toInt(), 1);
    QVERIFY(m_sandbox->run({QStringLiteral("check")}).output.contains("clean"));
}

void TestAdminCheck::findsAFileThatIsGone()
{
    const QString body = bodyOf(m_storedName);
    QVERIFY(!body.isEmpty() && QFile::remove(body));
    const AdminRun run = check();
    QVERIFY2(run.code == 3, run.all());
    QCOMPARE(run.json()[QStringLiteral("ok")], QJsonValue(false));
    QVERIFY2(problems(run).contains(QStringLiteral("missing-file")) ||
                 problems(run).contains(QStringLiteral("damaged-file")),
             run.all());
    QVERIFY2(run.output.contains(m_storedName.toUtf8()), run.all());
    QVERIFY2(check({QStringLiteral("--repair")}).code == 3, "what is lost cannot be repaired");
}

void TestAdminCheck::findsAFileThatWasChanged()
{
    QFile body(bodyOf(m_storedName));
    QVERIFY(!body.fileName().isEmpty());
    QFile::setPermissions(body.fileName(), QFile::ReadOwner | QFile::WriteOwner);
    QVERIFY(body.open(QIODevice::ReadWrite));
    // A flipped bit, and no fixed letter: an archive differs from run to run, and may hold it
    // there.
    QVERIFY(body.seek(body.size() / 2));
    const char byte = body.peek(1).at(0);
    QVERIFY(body.putChar(static_cast<char>(byte ^ 0x01)));
    body.close();
    const AdminRun run = check();
    QVERIFY2(run.code == 3, run.all());
    QCOMPARE(problems(run), QStringList(QStringLiteral("damaged-file")));
}

void TestAdminCheck::aQuickCheckDoesNotReadTheFiles()
{
    const AdminRun run = check({QStringLiteral("--quick")});
    QVERIFY2(run.code == 0, run.all());
    QCOMPARE(run.json()[QStringLiteral("filesRead")].toInt(), 0);
    QCOMPARE(run.json()[QStringLiteral("files")].toInt(), 1);
}

void TestAdminCheck::findsAFileThatNoRecordNames()
{
    // The record goes, the file stays: as if a copy of an older database had been put in place.
    QCOMPARE(m_sandbox->queried(QStringLiteral("SELECT COUNT(*) FROM orig_files")),
             QStringLiteral("1"));
    m_sandbox->empty(QStringLiteral("orig_files"));
    const AdminRun run = check();
    QVERIFY2(run.code == 3, run.all());
    QVERIFY2(run.output.contains("\"unrecorded-file\""), run.all());
    QVERIFY2(run.output.contains(m_storedName.toUtf8()), run.all());
}

void TestAdminCheck::notesAPathWithoutItsSeparator()
{
    QFile ini(m_sandbox->configPath());
    QVERIFY(ini.open(QIODevice::ReadOnly));
    QByteArray text = ini.readAll();
    ini.close();
    const QByteArray left = "; download: beside this file\n";
    const QByteArray right =
        "download = " + m_sandbox->path(QStringLiteral("place/download")).toUtf8() + '\n';
    if (TestDatabase::isServer()) { // which was written beforehand, with its place alone
        text += "[paths]\n" + right;
    } else {
        QVERIFY(text.contains(left));
        text.replace(left, right);
    }
    QVERIFY(!m_sandbox->write(QStringLiteral("place/kodms.ini"), text).isEmpty());
    const AdminRun run = check();
    QVERIFY2(run.output.contains("\"configuration\""), run.all());
    QVERIFY2(run.code == 0, run.all()); // odd, but usable
}

void TestAdminCheck::refusesADamagedDatabase()
{
    m_sandbox->damage();
    const AdminRun run = check();
    QVERIFY2(run.code == 1, run.all());
    const QString error = run.json()[QStringLiteral("error")].toString();
    QVERIFY2(error.contains(m_sandbox->databaseName()), run.all());
}

KODMS_TEST_MAIN(TestAdminCheck, QCoreApplication)
#include "TestAdminCheck.moc"
