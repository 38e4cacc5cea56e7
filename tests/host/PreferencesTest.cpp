// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/Preferences.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using KODMS::Host::Preferences;

class PreferencesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hasDefaults();
    void remembersAcrossRuns();
    void usersDoNotMeet();
    void standsBesideTheConfiguration();
    void aDamagedFileCostsOnlyTheMemory();
    void aFileThatCannotBeWrittenIsNoFailure();

private:
    QTemporaryDir m_dir;

    QString file(const char *name) { return m_dir.filePath(QLatin1String(name)); }
};

void PreferencesTest::hasDefaults()
{
    const Preferences preferences(file("none.ini"));
    QCOMPARE(preferences.language(), QStringLiteral("zh"));
    QVERIFY(preferences.lastLogin().isEmpty());
    QVERIFY(!preferences.highContrastStatus(1));
    QVERIFY(preferences.windowGeometry(1).isEmpty());
    QVERIFY(preferences.columns(1, QStringLiteral("t")).isEmpty());
}

void PreferencesTest::remembersAcrossRuns()
{
    const QByteArray columns = "{\"id\":\"料号名称\"}";
    {
        Preferences preferences(file("kept.ini"));
        preferences.setLanguage(QStringLiteral("en"));
        preferences.setLastLogin(QStringLiteral("wang.min"));
        preferences.setHighContrastStatus(7, true);
        preferences.setWindowGeometry(7, QByteArray("\x00\x01\xff", 3));
        preferences.setColumns(7, QStringLiteral("m_pJobTableWidget"), columns);
    }
    const Preferences preferences(file("kept.ini"));
    QCOMPARE(preferences.language(), QStringLiteral("en"));
    QCOMPARE(preferences.lastLogin(), QStringLiteral("wang.min"));
    QVERIFY(preferences.highContrastStatus(7));
    QCOMPARE(preferences.windowGeometry(7), QByteArray("\x00\x01\xff", 3));
    QCOMPARE(preferences.columns(7, QStringLiteral("m_pJobTableWidget")), columns);
}

void PreferencesTest::usersDoNotMeet()
{
    Preferences preferences(file("users.ini"));
    preferences.setHighContrastStatus(1, true);
    preferences.setColumns(1, QStringLiteral("t"), "one");
    QVERIFY(!preferences.highContrastStatus(2));
    QVERIFY(preferences.columns(2, QStringLiteral("t")).isEmpty());
    QVERIFY(preferences.columns(11, QStringLiteral("t")).isEmpty());
}

void PreferencesTest::standsBesideTheConfiguration()
{
    QCOMPARE(Preferences::fileBeside(QStringLiteral("/etc/kodms/kodms.ini")),
             QStringLiteral("/etc/kodms/kodms-desk.ini"));
}

void PreferencesTest::aDamagedFileCostsOnlyTheMemory()
{
    QFile damaged(file("damaged.ini"));
    QVERIFY(damaged.open(QIODevice::WriteOnly));
    const char rubbish[] = "[user-1\n\x00\xff\xfe language=@Invalid(\nlanguage=fr\n=";
    damaged.write(rubbish, sizeof rubbish - 1);
    damaged.close();
    Preferences preferences(damaged.fileName());
    QCOMPARE(preferences.language(), QStringLiteral("zh"));
    QVERIFY(!preferences.highContrastStatus(1));
    preferences.setLanguage(QStringLiteral("en"));
    QCOMPARE(preferences.language(), QStringLiteral("en"));
}

void PreferencesTest::aFileThatCannotBeWrittenIsNoFailure()
{
    // A folder that cannot exist, because its parent is a file.
    QFile plain(file("plain"));
    QVERIFY(plain.open(QIODevice::WriteOnly));
    Preferences preferences(file("plain/kodms-desk.ini"));
    preferences.setLanguage(QStringLiteral("en"));
    preferences.setColumns(1, QStringLiteral("t"), "text");
    QCOMPARE(preferences.language(), QStringLiteral("zh"));
}

KODMS_TEST_MAIN(PreferencesTest, QCoreApplication)
#include "PreferencesTest.moc"
