// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/config/Configuration.h"
#include "services/config/ConfigurationKeys.h"
#include "tests/support/TestMain.h"
#include "tests/support/WithoutPrivilege.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace KODMS::Services;

class ConfigurationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void createsTheUsersFileOnTheFirstRun();
    void doesNotCreateAFileThatWasNamed();
    void environmentNamesTheFile();
    void anEmptyFileMeansDefaultsBesideIt();
    void writtenIsRead();
    void aCopiedFolderHasItsOwnPlaces();
    void keepsPathsOfTheDesksAsTheyStand();
    void ownPathsAreRelativeToTheFile();
    void saysWhatIsWrong_data();
    void saysWhatIsWrong();
    void needsThePlaceOfTheChosenKind_data();
    void needsThePlaceOfTheChosenKind();
    void acceptsTheEnds_data();
    void acceptsTheEnds();
    void notesAPathWithoutSeparator();
    void notesAnUnknownKey();
    void refusesAFolderInPlaceOfTheFile();
    void refusesAnUnreadableFile();
    void failsToSaveInAReadOnlyFolder();
    void savesOverAnOldFileWholeOrNotAtAll();

private:
    QString path(const char *name) const { return m_dir->filePath(QString::fromLatin1(name)); }

    QString write(const QByteArray &text) const
    {
        QFile file(path("k.ini"));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write the test file");
        return file.fileName();
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void ConfigurationTest::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", path("config").toUtf8());
    qputenv("XDG_DATA_HOME", path("data").toUtf8());
    qunsetenv("KODMS_CONFIG");
}

void ConfigurationTest::createsTheUsersFileOnTheFirstRun()
{
#if defined(Q_OS_WIN)
    QSKIP("the user's folders cannot be moved here; windows.UserFolders looks at them");
#endif
    const auto loaded = Configuration::load({});
    QVERIFY2(loaded, qPrintable(loaded.text()));
    QCOMPARE(loaded.value.filePath, path("config/kodms/kodms.ini"));
    QVERIFY(QFileInfo::exists(loaded.value.filePath));
    QCOMPARE(loaded.value.database.driver, QStringLiteral("sqlite"));
    QCOMPARE(loaded.value.database.path, path("data/kodms/kodms.db"));
    QCOMPARE(loaded.value.fileStore.kind, QStringLiteral("folder"));
    QCOMPARE(loaded.value.fileStore.root, path("data/kodms/files"));
    QVERIFY(!loaded.value.isSample);
    QVERIFY(loaded.value.notices.isEmpty());
}

void ConfigurationTest::doesNotCreateAFileThatWasNamed()
{
    const auto loaded = Configuration::load(path("typo.ini"));
    QVERIFY(!loaded);
    QVERIFY(loaded.text().contains(path("typo.ini")));
    QVERIFY(!QFileInfo::exists(path("typo.ini")));
}

void ConfigurationTest::environmentNamesTheFile()
{
    qputenv("KODMS_CONFIG", write("[robot]\nport = 81\n").toUtf8());
    const auto loaded = Configuration::load({});
    QVERIFY2(loaded, qPrintable(loaded.text()));
    QCOMPARE(loaded.value.robot.port, 81);
    QVERIFY(!QFileInfo::exists(path("config/kodms/kodms.ini")));
}

void ConfigurationTest::anEmptyFileMeansDefaultsBesideIt()
{
    const auto loaded = Configuration::load(write(""));
    QVERIFY2(loaded, qPrintable(loaded.text()));
    QCOMPARE(loaded.value.database.path, path("kodms.db"));
    QCOMPARE(loaded.value.paths.download, path("download/"));
}

void ConfigurationTest::writtenIsRead()
{
    Configuration written = Configuration::defaults(path("sub/w.ini"), QStringLiteral("D:\\数据"));
    written.database.path = path("a b.db");
    written.paths.staging = QStringLiteral("D:\\s\\");
    written.limits.archiveBytes = Q_INT64_C(9223372036854775807);
    written.isSample = true;
    const Outcome saved = written.save();
    QVERIFY2(saved, qPrintable(saved.text));
    const auto read = Configuration::load(path("sub/w.ini"));
    QVERIFY2(read, qPrintable(read.text()));
    for (const ConfigurationKey &key : ConfigurationKey::all()) {
        if (qstrcmp(key.name, "root") != 0) // relative on this system, made absolute
            QCOMPARE(key.get(read.value), key.get(written));
    }
}

void ConfigurationTest::aCopiedFolderHasItsOwnPlaces()
{
    Configuration written = Configuration::defaultsFor(path("first/kodms.ini"));
    written.isSample = true;
    const Outcome saved = written.save();
    QVERIFY2(saved, qPrintable(saved.text));
    QVERIFY(QDir().mkpath(path("copy")));
    QVERIFY(QFile::copy(path("first/kodms.ini"), path("copy/kodms.ini")));

    const auto original = Configuration::load(path("first/kodms.ini"));
    QVERIFY2(original, qPrintable(original.text()));
    QCOMPARE(original.value.database.path, path("first/kodms.db"));
    const auto copy = Configuration::load(path("copy/kodms.ini"));
    QVERIFY2(copy, qPrintable(copy.text()));
    QCOMPARE(copy.value.database.path, path("copy/kodms.db"));
    QCOMPARE(copy.value.fileStore.root, path("copy/files"));
    QCOMPARE(copy.value.paths.staging, path("copy/staging/"));
    QCOMPARE(copy.value.paths.download, path("copy/download/"));
    QVERIFY(copy.value.isSample);
}

void ConfigurationTest::keepsPathsOfTheDesksAsTheyStand()
{
    const auto loaded =
        Configuration::load(write("[paths]\nstaging = ../in//\ndownload = x/./y/\n"));
    QVERIFY2(loaded, qPrintable(loaded.text()));
    QCOMPARE(loaded.value.paths.staging, QStringLiteral("../in//"));
    QCOMPARE(loaded.value.paths.download, QStringLiteral("x/./y/"));
    QVERIFY(loaded.value.notices.isEmpty());
}

void ConfigurationTest::ownPathsAreRelativeToTheFile()
{
    const auto loaded =
        Configuration::load(write("[database]\npath = d/k.db\nsslRootCertificate = root.crt\n"
                                  "[fileStore]\nroot = f\n"));
    QVERIFY2(loaded, qPrintable(loaded.text()));
    QCOMPARE(loaded.value.database.sslRootCertificate, path("root.crt"));
    QCOMPARE(loaded.value.database.path, path("d/k.db"));
    QCOMPARE(loaded.value.fileStore.root, path("f"));
}

void ConfigurationTest::saysWhatIsWrong_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("accepted");
    const auto row = [](const char *name, const char *section, const char *key, const char *value,
                        const char *accepted) {
        QTest::newRow(name) << QString::fromLatin1(section) << QString::fromLatin1(key)
                            << QString::fromLatin1(value) << QString::fromLatin1(accepted);
    };
    row("unknown driver", "database", "driver", "oracle", "sqlite | postgres");
    row("driver in capitals", "database", "driver", "SQLite", "sqlite | postgres");
    row("unknown store kind", "fileStore", "kind", "s3", "folder | gridfs");
    row("empty bucket", "fileStore", "bucket", "", "");
    row("empty staging", "paths", "staging", "", "");
    row("port 0", "robot", "port", "0", "1");
    row("port too large", "robot", "port", "65536", "65535");
    row("port is a word", "robot", "port", "http", "65535");
    row("port with a fraction", "robot", "port", "80.5", "65535");
    row("empty port", "robot", "port", "", "65535");
    row("negative port", "database", "port", "-1", "65535");
    row("host name of the robot", "robot", "host", "robot.local", "IP");
    row("no entries allowed", "limits", "archiveEntries", "0", "1");
    row("larger than any number", "limits", "archiveBytes", "9223372036854775808", "1");
    row("encryption half meant", "database", "sslMode", "on", "prefer | require | verify-ca");
    row("time-out too short", "database", "statementTimeoutMs", "5", "100");
    row("yes is not true", "installation", "sample", "yes", "true | false");
}

void ConfigurationTest::saysWhatIsWrong()
{
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, accepted);
    const QString file = write(QStringLiteral("[%1]\n%2 = %3\n").arg(section, key, value).toUtf8());
    const auto loaded = Configuration::load(file);
    QVERIFY(!loaded);
    for (const QString &part :
         QStringList{file, QStringLiteral("[%1]").arg(section), key, value, accepted})
        QVERIFY2(loaded.text().contains(part), qPrintable(loaded.text()));
}

void ConfigurationTest::needsThePlaceOfTheChosenKind_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("missing");
    QTest::newRow("embedded database") << QByteArray("[database]\npath =\n") << "path";
    QTest::newRow("server without host")
        << QByteArray("[database]\ndriver = postgres\nname = k\n") << "host";
    QTest::newRow("server without name")
        << QByteArray("[database]\ndriver = postgres\nhost = h\n") << "name";
    QTest::newRow("folder store") << QByteArray("[fileStore]\nroot =\n") << "root";
    QTest::newRow("file server") << QByteArray("[fileStore]\nkind = gridfs\n") << "uri";
}

void ConfigurationTest::needsThePlaceOfTheChosenKind()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, missing);
    const auto loaded = Configuration::load(write(text));
    QVERIFY(!loaded);
    QVERIFY2(loaded.text().contains(missing), qPrintable(loaded.text()));
}

void ConfigurationTest::acceptsTheEnds_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("port 1") << QByteArray("[robot]\nport = 1\n");
    QTest::newRow("port 65535") << QByteArray("[robot]\nport = 65535\n");
    QTest::newRow("no robot") << QByteArray("[robot]\nhost =\n");
    QTest::newRow("robot over IPv6") << QByteArray("[robot]\nhost = ::1\n");
    QTest::newRow("sample") << QByteArray("[installation]\nsample = true\n");
}

void ConfigurationTest::acceptsTheEnds()
{
    QFETCH(QByteArray, text);
    const auto loaded = Configuration::load(write(text));
    QVERIFY2(loaded, qPrintable(loaded.text()));
    QVERIFY(loaded.value.notices.isEmpty());
}

void ConfigurationTest::notesAPathWithoutSeparator()
{
    const auto loaded = Configuration::load(write("[paths]\nstaging = in/\ndownload = out\n"));
    QVERIFY2(loaded, qPrintable(loaded.text()));
    QCOMPARE(loaded.value.paths.download, QStringLiteral("out"));
    QCOMPARE(loaded.value.notices.size(), 1);
    QVERIFY(loaded.value.notices[0].contains(QStringLiteral("download")));
}

void ConfigurationTest::notesAnUnknownKey()
{
    const auto loaded = Configuration::load(write("[robot]\nprot = 80\n[fun]\nx = 1\n"));
    QVERIFY2(loaded, qPrintable(loaded.text()));
    QCOMPARE(loaded.value.notices.size(), 2);
    QVERIFY(loaded.value.notices[0].contains(QStringLiteral("[robot] prot")));
    QVERIFY(loaded.value.notices[1].contains(QStringLiteral("[fun] x")));
}

void ConfigurationTest::refusesAFolderInPlaceOfTheFile()
{
    const auto loaded = Configuration::load(m_dir->path());
    QVERIFY(!loaded);
    QVERIFY(loaded.text().contains(m_dir->path()));
}

void ConfigurationTest::refusesAnUnreadableFile()
{
#if defined(Q_OS_WIN)
    QSKIP("rights are not kept in modes here");
#endif
    const QString file = write("[robot]\nport = 81\n");
    QVERIFY(QFile::setPermissions(file, QFileDevice::Permissions()));
    const KODMS::Tests::WithoutPrivilege ordinary;
    if (!ordinary.isBound())
        QSKIP("this account keeps the power to read everything");
    const auto loaded = Configuration::load(file);
    QVERIFY(!loaded);
    QVERIFY(loaded.text().contains(file));
}

void ConfigurationTest::failsToSaveInAReadOnlyFolder()
{
    QFile blocker(path("blocker"));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    const auto below = Configuration::defaults(path("blocker/x/k.ini"), m_dir->path());
    QVERIFY(!below.save());
    QVERIFY(QDir().mkpath(path("k.ini")));
    const Outcome overFolder = Configuration::defaults(path("k.ini"), m_dir->path()).save();
    QVERIFY(!overFolder);
    QVERIFY(overFolder.text.contains(path("k.ini")));
}

void ConfigurationTest::savesOverAnOldFileWholeOrNotAtAll()
{
    const QString file = write("[robot]\nport = 81\n");
    auto loaded = Configuration::load(file);
    loaded.value.robot.port = 82;
    const Outcome saved = loaded.value.save();
    QVERIFY2(saved, qPrintable(saved.text));
    QCOMPARE(Configuration::load(file).value.robot.port, 82);
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList{QStringLiteral("k.ini")});
}

KODMS_TEST_MAIN(ConfigurationTest, QCoreApplication)

#include "ConfigurationTest.moc"
