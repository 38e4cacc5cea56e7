// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/package/InstalledPackage.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

/// examples/minimal_host against the installed package: configured, built, and run on an
/// installation that the installed kodms-admin has made. The tests follow each other.
class TestMinimalHost : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void installsOnlyPublicHeaders();
    void hostsLearnHowToReadTheHeaders();
    void theProgramsAreInstalled();
    void theHostConfiguresAndBuilds();
    void theInstalledToolMakesASample();
    void theHostShowsTheDesk();
    void theHostSaysWhyItCannotStart();

private:
    QString hostProgram() const { return m_package.path(QStringLiteral("host/minimal_host")); }

    KODMS::Tests::InstalledPackage m_package;
    QString m_login;
};

void TestMinimalHost::initTestCase()
{
    // Nothing here may touch the installation of whoever runs the tests.
    m_package.environment << QStringLiteral("HOME=") + m_package.path(QStringLiteral("home"))
                          << QStringLiteral("XDG_CONFIG_HOME=") +
                                 m_package.path(QStringLiteral("home/config"))
                          << QStringLiteral("XDG_DATA_HOME=") +
                                 m_package.path(QStringLiteral("home/data"));
    QVERIFY2(m_package.run(QStringLiteral(KODMS_CMAKE),
                           {QStringLiteral("--install"), QStringLiteral(KODMS_BINARY_DIR),
                            QStringLiteral("--prefix"), m_package.prefix()}),
             m_package.everythingSaid());
}

void TestMinimalHost::installsOnlyPublicHeaders()
{
    const QDir include(m_package.prefix() + QStringLiteral("/include/kodms"));
    QCOMPARE(include.entryList(QDir::Dirs | QDir::NoDotAndDotDot),
             QStringList({QStringLiteral("desks"), QStringLiteral("foundation"),
                          QStringLiteral("services"), QStringLiteral("tests")}));
    const QDir tests(include.filePath(QStringLiteral("tests")));
    QCOMPARE(tests.entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("fakes"))); // for the tests of a host
    const QDir services(include.filePath(QStringLiteral("services")));
    QCOMPARE(services.entryList(QDir::Dirs | QDir::NoDotAndDotDot),
             QStringList({QStringLiteral("api"), QStringLiteral("notices")}));
    QVERIFY(include.exists(QStringLiteral("desks/export/DMS_Export_Widget.h")));
    QVERIFY(include.exists(QStringLiteral("desks/download/DMS_Download_Widget.h")));
    QVERIFY(include.exists(QStringLiteral("desks/modifyfile/DMS_ModifyFile_Widget.h")));
    QVERIFY(!include.exists(QStringLiteral("desks/common/JobColumns.h")));
}

void TestMinimalHost::hostsLearnHowToReadTheHeaders()
{
    QFile targets(m_package.prefix() +
                  QStringLiteral("/lib/cmake/KodmsDesks/KodmsDesksTargets.cmake"));
    QVERIFY(targets.open(QIODevice::ReadOnly));
    const QByteArray text = targets.readAll();
    for (const char *library : {"Kodms::services", "Kodms::desks", "Kodms::fakes"}) {
        const int from = text.indexOf("set_target_properties(" + QByteArray(library));
        QVERIFY2(from >= 0, library);
        const QByteArray properties = text.mid(from, text.indexOf("\n)", from) - from);
        QVERIFY2(properties.contains("INTERFACE_COMPILE_FEATURES \"cxx_std_17\""), properties);
        QVERIFY2(properties.contains("<CXX_COMPILER_ID:MSVC>:/utf-8>\""), properties);
    }
}

void TestMinimalHost::theProgramsAreInstalled()
{
    for (const char *name : {"kodms-admin", "kodms-robot"}) {
        const QString program =
            m_package.prefix() + QStringLiteral("/bin/") + QString::fromLatin1(name);
        QVERIFY2(m_package.run(program, {QStringLiteral("--version")}), m_package.everythingSaid());
        QVERIFY2(m_package.output.startsWith(name), m_package.everythingSaid());
    }
}

void TestMinimalHost::theHostConfiguresAndBuilds()
{
    QStringList configure{QStringLiteral("-S"),
                          QStringLiteral(KODMS_SOURCE_DIR "/examples/minimal_host"),
                          QStringLiteral("-B"),
                          m_package.path(QStringLiteral("host")),
                          QStringLiteral("-G"),
                          QStringLiteral("Ninja"),
                          QStringLiteral("-DCMAKE_CXX_COMPILER=" KODMS_CXX),
                          QStringLiteral("-DCMAKE_PREFIX_PATH=") + m_package.prefix()};
    if (*KODMS_SANITIZE != '\0')
        configure << QStringLiteral("-DCMAKE_CXX_FLAGS=-fsanitize=" KODMS_SANITIZE);
    QVERIFY2(m_package.run(QStringLiteral(KODMS_CMAKE), configure), m_package.everythingSaid());
    QVERIFY2(m_package.run(QStringLiteral(KODMS_CMAKE),
                           {QStringLiteral("--build"), m_package.path(QStringLiteral("host"))}),
             m_package.everythingSaid());
}

void TestMinimalHost::theInstalledToolMakesASample()
{
    const QString sample = m_package.path(QStringLiteral("sample"));
    QVERIFY2(m_package.run(m_package.prefix() + QStringLiteral("/bin/kodms-admin"),
                           {QStringLiteral("demo"), sample, QStringLiteral("--flows"),
                            QStringLiteral("40"), QStringLiteral("--json")}),
             m_package.everythingSaid());
    const QJsonObject made = QJsonDocument::fromJson(m_package.output).object();
    const QJsonArray accounts = made[QStringLiteral("accounts")].toArray();
    for (const auto &entry : accounts) {
        const QJsonObject account = entry.toObject();
        if (!account[QStringLiteral("roles")].toArray().contains(QStringLiteral("admin")))
            continue;
        m_login = account[QStringLiteral("login")].toString();
        m_package.environment << QStringLiteral("HOST_PASSWORD=") +
                                     account[QStringLiteral("password")].toString();
    }
    QVERIFY(!m_login.isEmpty());
    m_package.environment << QStringLiteral("KODMS_CONFIG=") +
                                 made[QStringLiteral("config")].toString();
}

void TestMinimalHost::theHostShowsTheDesk()
{
    const QString picture = m_package.path(QStringLiteral("desk.png"));
    QVERIFY2(m_package.run(hostProgram(), {m_login, picture}, 60'000), m_package.everythingSaid());
    const QImage image(picture);
    QVERIFY(!image.isNull());
    QVERIFY(image.width() > 300);
}

void TestMinimalHost::theHostSaysWhyItCannotStart()
{
    m_package.environment << QStringLiteral("KODMS_CONFIG=") +
                                 m_package.path(QStringLiteral("nowhere/kodms.ini"));
    QVERIFY(!m_package.run(hostProgram(), {m_login, QStringLiteral("x.png")}, 60'000));
    QVERIFY2(m_package.errors.contains("nowhere/kodms.ini"), m_package.errors.constData());
}

KODMS_TEST_MAIN(TestMinimalHost, QCoreApplication)
#include "TestMinimalHost.moc"
