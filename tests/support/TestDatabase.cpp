// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestDatabase.h"

#include "tests/support/PlainConnection.h"
#include "tests/support/ServerFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QUuid>
#include <QVector>

namespace KODMS::Tests {

using Services::DatabaseSettings;

namespace {

constexpr int StatementTimeoutMs = 30000;
constexpr int BusyTimeoutMs = 5000;

/// The server's own databases: one that is always there, and one that is always empty.
const QString HomeDatabase = QStringLiteral("postgres");
const QString EmptyDatabase = QStringLiteral("template0");

/// What the server's starter wrote.
ServerFile serverFile()
{
    const QString path = qEnvironmentVariable("KODMS_TEST_SERVER");
    ServerFile file(path);
    if (!file.isRead())
        qFatal("KODMS_TEST_SERVER names no file that can be read: %s", qPrintable(path));
    return file;
}

DatabaseSettings serverSettings(const QString &name)
{
    DatabaseSettings settings = serverFile().settings(name);
    settings.sslMode = QStringLiteral("prefer");
    settings.statementTimeoutMs = StatementTimeoutMs;
    settings.busyTimeoutMs = BusyTimeoutMs;
    return settings;
}

DatabaseSettings fileSettings(const QString &path)
{
    DatabaseSettings settings;
    settings.driver = QStringLiteral("sqlite");
    settings.path = path;
    settings.sslMode = QStringLiteral("prefer"); // as every configuration says
    settings.statementTimeoutMs = StatementTimeoutMs;
    settings.busyTimeoutMs = BusyTimeoutMs;
    return settings;
}

QString freshName()
{
    return QStringLiteral("test_") +
           QUuid::createUuid().toString(QUuid::WithoutBraces).remove(QLatin1Char('-'));
}

void runOnServer(const QString &statement)
{
    PlainConnection(serverSettings(HomeDatabase)).run(statement);
}

/// Whatever the server's own databases begin with.
QString plainLocale()
{
    constexpr int firstOfProviders = 150000;
    const QString version = PlainConnection(serverSettings(HomeDatabase))
                                .texts(QStringLiteral("SHOW server_version_num"))
                                .value(0);
    const QString locale = QStringLiteral(" ENCODING 'UTF8' LOCALE 'C.UTF-8'");
    return version.toInt() < firstOfProviders ? locale
                                              : locale + QLatin1String(" LOCALE_PROVIDER libc");
}

} // namespace

bool TestDatabase::isServer()
{
    const QByteArray engine = qgetenv("KODMS_TEST_ENGINE");
    if (!engine.isEmpty() && engine != "postgres")
        qFatal("KODMS_TEST_ENGINE is neither empty nor postgres: %s", engine.constData());
    return !engine.isEmpty();
}

bool TestDatabase::isEngineThere(QString *why)
{
    if (!isServer())
        return true;
    const ServerFile file = serverFile();
    *why = file.reason();
    return file.isServer();
}

DatabaseSettings TestDatabase::settingsAt(const QString &place)
{
    return isServer() ? serverSettings(place) : fileSettings(place);
}

TestDatabase::TestDatabase(Begin begin)
{
    if (!isServer())
        m_dir = std::make_unique<QTemporaryDir>();
    m_settings =
        settingsAt(isServer() ? freshName() : m_dir->filePath(QStringLiteral("records.db")));
    if (begin == Begin::Empty)
        create(EmptyDatabase);
}

TestDatabase::TestDatabase(const QString &path, Begin begin)
    : m_settings(settingsAt(isServer() ? freshName() : path))
{
    if (begin == Begin::Empty)
        create(EmptyDatabase);
}

TestDatabase::~TestDatabase()
{
    if (!m_isThere)
        return;
    if (m_copy.isOfLasting())
        ServerCopy::keepForOthers(m_copy);
    else
        remove();
}

void TestDatabase::create(const QString &from)
{
    if (!isServer())
        return;
    QString statement = QStringLiteral("CREATE DATABASE %1 TEMPLATE %2").arg(m_settings.name, from);
    if (from == EmptyDatabase)
        statement += plainLocale();
    runOnServer(statement);
    m_isThere = true;
}

void TestDatabase::remove()
{
    if (m_isThere)
        runOnServer(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(m_settings.name));
    m_isThere = false;
    m_copy = {};
    if (isServer())
        return;
    for (const char *suffix : {"", "-wal", "-shm"})
        QFile::remove(m_settings.path + QLatin1String(suffix));
}

void TestDatabase::setIn(Services::Configuration &configuration) const
{
    if (!isServer())
        return;
    DatabaseSettings settings = m_settings;
    settings.statementTimeoutMs = configuration.database.statementTimeoutMs;
    settings.busyTimeoutMs = configuration.database.busyTimeoutMs;
    configuration.database = settings;
}

void TestDatabase::prepareSample(const QString &folder) const
{
    if (!isServer())
        return;
    QFile file(QDir(folder).filePath(QStringLiteral("kodms.ini")));
    const QByteArray text = section() + "[installation]\nsample = true\n";
    if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly) ||
        file.write(text) != text.size())
        qFatal("%s cannot be written", qPrintable(file.fileName()));
}

TestDatabase &TestDatabase::lasting()
{
    static QVector<TestDatabase *> all;
    if (all.isEmpty())
        qAddPostRoutine([] {
            for (const QString &name : ServerCopy::forgetKept())
                runOnServer(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(name));
            qDeleteAll(all);
            all.clear();
        });
    all.append(new TestDatabase);
    all.last()->m_isLasting = true;
    return *all.last();
}

void TestDatabase::copyFrom(const TestDatabase &other)
{
    if (isServer())
        return copyOnServer(other);
    remove();
    if (!QFile::copy(other.m_settings.path, m_settings.path))
        qFatal("%s cannot be copied", qPrintable(other.m_settings.path));
}

/// A server takes its time to copy a database and to drop one, and little to put rows back.
void TestDatabase::copyOnServer(const TestDatabase &other)
{
    const QString origin = other.m_settings.name;
    if (other.m_isFrozen && m_copy.restore(origin, m_settings))
        return;
    remove();
    if (const auto kept = ServerCopy::keptOf(origin); kept && other.m_isLasting) {
        m_copy = *kept;
        m_settings.name = m_copy.name();
        m_isThere = true;
        if (m_copy.restore(origin, m_settings))
            return;
        remove();
        m_settings.name = freshName();
    }
    create(origin);
    m_copy = other.m_isFrozen ? ServerCopy(origin, m_settings, other.m_isLasting) : ServerCopy();
}

QByteArray TestDatabase::section() const
{
    if (!isServer())
        return {};
    return QStringLiteral("[database]\ndriver = %1\nhost = %2\nport = %3\nname = %4\nuser = %5\n"
                          "passwordFile = %6\n")
        .arg(m_settings.driver, m_settings.host)
        .arg(m_settings.port)
        .arg(m_settings.name, m_settings.user, m_settings.passwordFile)
        .toUtf8();
}

QString TestDatabase::hurry()
{
    return isServer() ? QStringLiteral("SET synchronous_commit = off")
                      : QStringLiteral("PRAGMA synchronous = OFF");
}

} // namespace KODMS::Tests
