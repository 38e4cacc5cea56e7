// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/config/Configuration.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

#include <windows.h>

#include <shlobj.h>

using namespace KODMS::Services;

/// Where a user's configuration and data are when nobody has said where: in the folder of the
/// user's that stays on this machine, whatever the user is called.
class UserFoldersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase();
    void cleanupTestCase();
    void theConfiguration();
    void theInstallation();

private:
    /// Exit code 0 or a failed test; what was written.
    QJsonObject admin(const QStringList &arguments, const QByteArray &input = {});

    QString m_place;
};

/// A folder that was there before is somebody's.
void UserFoldersTest::initTestCase()
{
    wchar_t known[MAX_PATH] = {}; // the variable of that name may be another user's under wine
    ::SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, known);
    const QString local = QDir::fromNativeSeparators(QString::fromWCharArray(known));
    QVERIFY(QDir::isAbsolutePath(local));
    QVERIFY2(local.endsWith(QStringLiteral("/AppData/Local")), qPrintable(local));
    if (QFileInfo::exists(local + QStringLiteral("/kodms")))
        QSKIP("the user of this machine works with an installation");
    m_place = local + QStringLiteral("/kodms");
    qunsetenv("KODMS_CONFIG");
}

void UserFoldersTest::cleanupTestCase()
{
    if (!m_place.isEmpty())
        QVERIFY(QDir(m_place).removeRecursively());
}

QJsonObject UserFoldersTest::admin(const QStringList &arguments, const QByteArray &input)
{
    constexpr int patienceMs = 60'000;
    QProcess program;
    program.start(QStringLiteral(KODMS_ADMIN_PROGRAM),
                  arguments + QStringList{QStringLiteral("--json")});
    program.write(input);
    program.closeWriteChannel();
    if (!program.waitForFinished(patienceMs) || program.exitStatus() != QProcess::NormalExit ||
        program.exitCode() != 0)
        qWarning("exit code %d: %s%s", program.exitCode(), program.readAllStandardOutput().data(),
                 program.readAllStandardError().data());
    return QJsonDocument::fromJson(program.readAllStandardOutput()).object();
}

void UserFoldersTest::theConfiguration()
{
    QCOMPARE(Configuration::defaultPath(), QString(m_place + QStringLiteral("/kodms.ini")));
    QVERIFY(!QFileInfo::exists(m_place)); // asking makes nothing
    const Configuration made = Configuration::defaultsFor(Configuration::defaultPath());
    QCOMPARE(made.database.path, QString(m_place + QStringLiteral("/kodms.db")));
    QCOMPARE(made.fileStore.root, QString(m_place + QStringLiteral("/files")));
    QCOMPARE(made.paths.staging, QString(m_place + QStringLiteral("/staging/")));
    QCOMPARE(made.paths.download, QString(m_place + QStringLiteral("/download/")));
}

void UserFoldersTest::theInstallation()
{
    const QJsonObject made =
        admin({QStringLiteral("init"), QStringLiteral("--login"), QStringLiteral("chief"),
               QStringLiteral("--name"), QStringLiteral("主管"), QStringLiteral("--password-file"),
               QStringLiteral("-")},
              "a password for tests\n");
    QCOMPARE(QDir::fromNativeSeparators(made[QStringLiteral("config")].toString()),
             QString(m_place + QStringLiteral("/kodms.ini")));
    for (const char *name : {"kodms.ini", "kodms.db"})
        QVERIFY2(QFileInfo(QDir(m_place).filePath(QLatin1String(name))).isFile(), name);
    QVERIFY(QFileInfo(QDir(m_place).filePath(QStringLiteral("staging"))).isDir());
    QCOMPARE(admin({QStringLiteral("status")})[QStringLiteral("ok")], QJsonValue(true));
    QCOMPARE(admin({QStringLiteral("check")})[QStringLiteral("clean")], QJsonValue(true));
}

KODMS_TEST_MAIN(UserFoldersTest, QCoreApplication)
#include "UserFoldersTest.moc"
