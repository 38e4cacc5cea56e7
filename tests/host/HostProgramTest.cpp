// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/InstallationSetup.h"
#include "tests/support/TestMain.h"
#include "tests/support/WithoutPrivilege.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS;
using namespace KODMS::Services;

/// The program as people start it: exit codes, messages, pictures.
class HostProgramTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void helpAndVersion();
    void aWrongOptionIsToldBeforeAnythingStarts();
    void saysHowFastTheSignInWindowCame();
    void aBadInstallationEndsWithAReason_data();
    void aBadInstallationEndsWithAReason();
    void aFullDiskIsCalledSo();
    void picturesOfEveryWindow_data();
    void picturesOfEveryWindow();
    void picturesAreForSamplesOnly();
    void languageOfTheMessages();

private:
    struct Ended {
        int code = -1;
        QString out;
        QString err;
    };

    Ended run(const QStringList &arguments, const QString &fullDisk = QString()) const;

    QString path(const char *name) const { return m_dir.filePath(QLatin1String(name)); }

    void copySample(const QString &folder) const;
    QString brokenInstallation(const QString &kind) const;

    QTemporaryDir m_dir;
    QString m_sample;
};

void HostProgramTest::initTestCase()
{
    m_sample = path("sample");
    QVERIFY(QDir().mkdir(path("run")));
    QVERIFY(QFile::setPermissions(path("run"), QFile::ReadOwner | QFile::WriteOwner |
                                                   QFile::ExeOwner)); // else it is warned of
    const Outcome made = InstallationSetup::createSample(m_sample);
    QVERIFY2(made.ok, qPrintable(made.text));
}

/// `fullDisk`: a folder in which nothing fits any more.
HostProgramTest::Ended HostProgramTest::run(const QStringList &arguments,
                                            const QString &fullDisk) const
{
    Tests::OrdinaryProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.remove(QStringLiteral("KODMS_CONFIG"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_dir.filePath(QStringLiteral("run")));
#ifdef KODMS_FULL_DISK
    if (!fullDisk.isEmpty()) {
        environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(KODMS_FULL_DISK));
        environment.insert(QStringLiteral("KODMS_DISK_ROOT"), fullDisk);
        environment.insert(QStringLiteral("KODMS_DISK_BUDGET"), QStringLiteral("0"));
        environment.insert(QStringLiteral("KODMS_DISK_FROM_START"), QStringLiteral("1"));
    }
#else
    Q_UNUSED(fullDisk)
#endif
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(KODMS_DESK_PROGRAM), arguments);
    Ended ended;
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
        ended.err = process.errorString() + QString::fromUtf8(process.readAllStandardError());
        return ended;
    }
    ended.code = process.exitCode();
    ended.out = QString::fromUtf8(process.readAllStandardOutput());
    ended.err = QString::fromUtf8(process.readAllStandardError());
    return ended;
}

void HostProgramTest::helpAndVersion()
{
    const Ended help = run({QStringLiteral("--help")});
    QCOMPARE(help.code, 0);
    QVERIFY(help.out.contains(QStringLiteral("--screenshots")));
    const Ended version = run({QStringLiteral("--version")});
    QCOMPARE(version.code, 0);
    QCOMPARE(version.out.trimmed(), QStringLiteral("kodms-desk " KODMS_VERSION));
}

void HostProgramTest::aWrongOptionIsToldBeforeAnythingStarts()
{
    const Ended ended = run({QStringLiteral("--lang"), QStringLiteral("fr")});
    QCOMPARE(ended.code, 2);
    QVERIFY2(ended.err.contains(QStringLiteral("fr")), qPrintable(ended.err));
}

void HostProgramTest::saysHowFastTheSignInWindowCame()
{
    const Ended ended =
        run({QStringLiteral("--config"), InstallationSetup::sampleConfigPath(m_sample),
             QStringLiteral("--exit-after-show")});
    QVERIFY2(ended.code == 0, qPrintable(ended.err));
    bool isNumber = false;
    const int milliseconds = ended.out.trimmed().toInt(&isNumber);
    QVERIFY2(isNumber && milliseconds > 0 && milliseconds < 30000, qPrintable(ended.out));
}

void HostProgramTest::copySample(const QString &folder) const
{
    QDir().mkpath(folder + QStringLiteral("/files"));
    QFile::copy(m_sample + QStringLiteral("/kodms.db"), folder + QStringLiteral("/kodms.db"));
    QFile::copy(InstallationSetup::sampleConfigPath(m_sample),
                folder + QStringLiteral("/kodms.ini"));
}

/// Returns the configuration file of a copy of the sample that has gone wrong.
QString HostProgramTest::brokenInstallation(const QString &kind) const
{
    const QString folder =
        m_dir.filePath(QString(kind).replace(QLatin1Char(' '), QLatin1Char('-')));
    copySample(folder);
    const QString config = folder + QStringLiteral("/kodms.ini");
    const QString database = folder + QStringLiteral("/kodms.db");
    if (kind == QLatin1String("no configuration")) {
        QFile::remove(config);
    } else if (kind == QLatin1String("configuration is a folder")) {
        QFile::remove(config);
        QDir().mkpath(config);
    } else if (kind == QLatin1String("configuration is no text")) {
        QFile file(config);
        if (file.open(QIODevice::WriteOnly))
            file.write(QByteArray("\xff\xfe\x00\x01", 4));
    } else if (kind == QLatin1String("no database")) {
        QFile::remove(database);
    } else if (kind == QLatin1String("damaged database")) {
        QFile file(database);
        if (file.open(QIODevice::WriteOnly))
            file.write(QByteArray(8192, '\x5a'));
    } else if (kind == QLatin1String("newer database")) {
        {
            QSqlDatabase connection =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("newer"));
            connection.setDatabaseName(database);
            connection.open();
            QSqlQuery(connection)
                .exec(QStringLiteral(
                    "INSERT INTO schema_version (version, applied_time) VALUES (9999, 'later')"));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("newer"));
    } else if (kind == QLatin1String("unreadable configuration")) {
        QFile::setPermissions(config, QFile::Permissions());
    } else if (kind == QLatin1String("unreadable database")) {
        QFile::setPermissions(database, QFile::Permissions());
    } else if (kind == QLatin1String("read-only folder")) {
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
    } else if (kind == QLatin1String("file store is a file")) {
        QDir(folder + QStringLiteral("/files")).removeRecursively();
        QFile file(folder + QStringLiteral("/files"));
        file.open(QIODevice::WriteOnly);
    }
    return config;
}

void HostProgramTest::aBadInstallationEndsWithAReason_data()
{
    QTest::addColumn<QString>("said");
    QTest::newRow("no configuration") << "kodms.ini";
    QTest::newRow("configuration is a folder") << "kodms.ini";
    QTest::newRow("configuration is no text") << "UTF-8";
    QTest::newRow("no database") << "kodms-admin init";
    QTest::newRow("damaged database") << "damaged";
    QTest::newRow("newer database") << "9999";
    QTest::newRow("file store is a file") << "files";
#if !defined(Q_OS_WIN) // where rights are not kept in modes
    QTest::newRow("unreadable configuration") << "kodms.ini";
    QTest::newRow("unreadable database") << "kodms.db";
    QTest::newRow("read-only folder") << "may not be written";
#endif
}

void HostProgramTest::aBadInstallationEndsWithAReason()
{
    QFETCH(QString, said);
    const QString config = brokenInstallation(QString::fromLatin1(QTest::currentDataTag()));
    const Ended ended = run({QStringLiteral("--config"), config, QStringLiteral("--lang"),
                             QStringLiteral("en"), QStringLiteral("--exit-after-show")});
    QFile::setPermissions(QFileInfo(config).path(),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QVERIFY2(ended.code == 1, qPrintable(QString::number(ended.code) + ended.err));
    QVERIFY2(ended.err.contains(said), qPrintable(ended.err));
}

void HostProgramTest::aFullDiskIsCalledSo()
{
#ifdef KODMS_FULL_DISK
    const QString folder = path("full");
    copySample(folder);
    const Ended ended =
        run({QStringLiteral("--config"), folder + QStringLiteral("/kodms.ini"),
             QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("--exit-after-show")},
            folder);
    QVERIFY2(ended.code == 1, qPrintable(QString::number(ended.code) + ended.err));
    QVERIFY2(ended.err.contains(QStringLiteral("disk is full")), qPrintable(ended.err));
    QVERIFY2(ended.err.contains(QStringLiteral("kodms.db")), qPrintable(ended.err));
#else
    QSKIP("the sanitizers leave no room before them for a full disk");
#endif
}

void HostProgramTest::picturesOfEveryWindow_data()
{
    QTest::addColumn<QString>("scale");
    QTest::addColumn<QSize>("deskSize");
    QTest::newRow("100 %") << "1" << QSize(1360, 900);
    QTest::newRow("150 %") << "1.5" << QSize(2040, 1350);
}

void HostProgramTest::picturesOfEveryWindow()
{
    QFETCH(QString, scale);
    QFETCH(QSize, deskSize);
    const QDir folder(m_dir.filePath(QStringLiteral("pictures-") + scale));
    const Ended ended =
        run({QStringLiteral("--config"), InstallationSetup::sampleConfigPath(m_sample),
             QStringLiteral("--screenshots"), folder.path(), QStringLiteral("--scale"), scale});
    QVERIFY2(ended.code == 0, qPrintable(ended.err));
    QCOMPARE(ended.err, QString()); // what reads like a failure is one
    for (const char *name :
         {"sign-in", "desk-admin", "desk-preprocessor", "desk-reviewer", "desk-user", "files-admin",
          "files-preprocessor", "files-reviewer", "files-user", "desk-high-contrast", "notices",
          "hand-over", "hand-over-alone", "history", "replace-file", "intake", "shortcuts",
          "about"}) {
        const QImage image(folder.filePath(QLatin1String(name) + QStringLiteral(".png")));
        QVERIFY2(!image.isNull(), name);
        const bool isDesk =
            QByteArray(name).startsWith("desk-") || QByteArray(name).startsWith("files-");
        QVERIFY2(!isDesk || image.size() == deskSize, name);
        // A window that painted nothing has one colour.
        const QImage small = image.convertToFormat(QImage::Format_Indexed8);
        QVERIFY2(small.colorCount() > 16, name);
    }
    QCOMPARE(folder.entryList({QStringLiteral("*.png")}).size(), 18);
}

void HostProgramTest::picturesAreForSamplesOnly()
{
    const QString config = brokenInstallation(QStringLiteral("real"));
    QFile file(config);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArray text = file.readAll();
    QVERIFY(text.contains("sample = true"));
    file.close();
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text.replace("sample = true", "sample = false"));
    file.close();
    const Ended ended =
        run({QStringLiteral("--config"), config, QStringLiteral("--screenshots"), path("none")});
    QCOMPARE(ended.code, 1);
    QVERIFY2(ended.err.contains(QStringLiteral("sample")), qPrintable(ended.err));
    QVERIFY(!QFile::exists(path("none")));
}

void HostProgramTest::languageOfTheMessages()
{
    const QStringList arguments{QStringLiteral("--config"), path("missing.ini"),
                                QStringLiteral("--exit-after-show")};
    QVERIFY(run(arguments).err.contains(QStringLiteral("不存在")));
    QVERIFY(!run(arguments + QStringList{QStringLiteral("--lang"), QStringLiteral("en")})
                 .err.contains(QStringLiteral("不存在")));
}

KODMS_TEST_MAIN(HostProgramTest, QCoreApplication)
#include "HostProgramTest.moc"
