// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTest>

using KODMS::Tests::AdminRun;
using KODMS::Tests::AdminSandbox;

/// Backing up and reading back, as whoever looks after the installation does.
class TestAdminBackup : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void whatIsRestoredIsWhatWasThere();
    void refusesAnExistingBackupFile();
    void refusesAPlaceItCannotWriteTo();
    void refusesToRestoreOverAnInstallation();
    void refusesWhatIsNoBackup_data();
    void refusesWhatIsNoBackup();

private:
    AdminRun restoreInto(const QString &place, const QString &file) const;

    std::unique_ptr<AdminSandbox> m_sandbox;
    QString m_backup;
};

void TestAdminBackup::init()
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
    m_backup = m_sandbox->path(QStringLiteral("night.backup"));
    const AdminRun run = m_sandbox->runJson({QStringLiteral("backup"), m_backup});
    QVERIFY2(run.code == 0, run.all());
    QCOMPARE(run.json()[QStringLiteral("flows")].toInt(), 1);
    QCOMPARE(run.json()[QStringLiteral("files")].toInt(), 1);
    QCOMPARE(run.json()[QStringLiteral("recordsSha256")].toString().size(), 64);
}

/// The configuration names no place of its own, so it serves a new one as it is.
AdminRun TestAdminBackup::restoreInto(const QString &place, const QString &file) const
{
    QFile ini(m_sandbox->configPath());
    if (!ini.open(QIODevice::ReadOnly))
        return {};
    const QString config = m_sandbox->write(place + QStringLiteral("/kodms.ini"), ini.readAll());
    return m_sandbox->runJson(
        {QStringLiteral("--config"), config, QStringLiteral("restore"), file});
}

void TestAdminBackup::whatIsRestoredIsWhatWasThere()
{
    const AdminRun run = restoreInto(QStringLiteral("second"), m_backup);
    QVERIFY2(run.code == 0, run.all());
    const QStringList config{QStringLiteral("--config"),
                             m_sandbox->path(QStringLiteral("second/kodms.ini"))};
    const AdminRun check = m_sandbox->runJson(config + QStringList{QStringLiteral("check")});
    QVERIFY2(check.code == 0, check.all());
    QCOMPARE(check.json()[QStringLiteral("filesRead")].toInt(), 1);
    const AdminRun users =
        m_sandbox->run(config + QStringList{QStringLiteral("user"), QStringLiteral("list")});
    QVERIFY2(users.output.contains("chief"), users.all());
    // The new place is its own: another backup of it holds the same records.
    const AdminRun again =
        m_sandbox->runJson(config + QStringList{QStringLiteral("backup"),
                                                m_sandbox->path(QStringLiteral("again.backup"))});
    QVERIFY2(again.code == 0, again.all());
    QCOMPARE(again.json()[QStringLiteral("flows")].toInt(), 1);
}

void TestAdminBackup::refusesAnExistingBackupFile()
{
    const QStringList before = m_sandbox->filesBelow(QString());
    const AdminRun run = m_sandbox->runJson({QStringLiteral("backup"), m_backup});
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.output.contains("night.backup"), run.all());
    QVERIFY(QFile::exists(m_backup));
    QCOMPARE(m_sandbox->filesBelow(QString()), before);
}

void TestAdminBackup::refusesAPlaceItCannotWriteTo()
{
    const QString inTheWay = m_sandbox->write(QStringLiteral("way"), "x");
    const QStringList places{inTheWay + QStringLiteral("/x.backup"),
                             m_sandbox->path(QStringLiteral("no/such/folder/x.backup"))};
    for (const QString &file : places) {
        const AdminRun run = m_sandbox->runJson({QStringLiteral("backup"), file});
        QVERIFY2(run.code == 1, run.all());
        QVERIFY2(run.output.contains("x.backup"), run.all());
        // Of the nameless file that is written first, nobody has heard.
        QVERIFY2(!run.output.contains(".part"), run.all());
    }
}

void TestAdminBackup::refusesToRestoreOverAnInstallation()
{
    const AdminRun run = m_sandbox->runJson({QStringLiteral("restore"), m_backup});
    QVERIFY2(run.code == 1, run.all());
    const AdminRun check = m_sandbox->runJson({QStringLiteral("check")});
    QVERIFY2(check.code == 0, check.all());
}

void TestAdminBackup::refusesWhatIsNoBackup_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"missing", "empty", "text", "torn", "changed", "folder"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void TestAdminBackup::refusesWhatIsNoBackup()
{
    QFETCH(QString, kind);
    QFile whole(m_backup);
    QVERIFY(whole.open(QIODevice::ReadOnly));
    QByteArray bytes = whole.readAll();
    const QString file = m_sandbox->path(QStringLiteral("bad.backup"));
    if (kind == QLatin1String("folder"))
        QVERIFY(QDir().mkpath(file));
    else if (kind == QLatin1String("empty"))
        m_sandbox->write(QStringLiteral("bad.backup"), {});
    else if (kind == QLatin1String("text"))
        m_sandbox->write(QStringLiteral("bad.backup"), "this is no backup");
    else if (kind == QLatin1String("torn"))
        m_sandbox->write(QStringLiteral("bad.backup"), bytes.left(bytes.size() * 2 / 3));
    else if (kind == QLatin1String("changed")) {
        bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 0x55);
        m_sandbox->write(QStringLiteral("bad.backup"), bytes);
    }
    const AdminRun run = restoreInto(QStringLiteral("third"), file);
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.output.contains("bad.backup"), run.all());
    QVERIFY(!QFile::exists(m_sandbox->path(QStringLiteral("third/kodms.db"))));
    // The same place still takes a good one.
    const AdminRun good = restoreInto(QStringLiteral("third"), m_backup);
    QVERIFY2(good.code == 0, good.all());
}

KODMS_TEST_MAIN(TestAdminBackup, QCoreApplication)
#include "TestAdminBackup.moc"
