// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"

#include "tests/archive/RawTar.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/WithoutPrivilege.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QProcess>

namespace KODMS::Tests {

QJsonObject AdminRun::json() const
{
    return QJsonDocument::fromJson(output).object();
}

QByteArray AdminRun::all() const
{
    return "exit code " + QByteArray::number(code) + "\nstdout: " + output + "\nstderr: " + errors;
}

AdminSandbox::AdminSandbox() : m_database(path(QStringLiteral("place/kodms.db")))
{
    if (TestDatabase::isServer() &&
        write(QStringLiteral("place/kodms.ini"), m_database.section()).isEmpty())
        qFatal("%s cannot be written", qPrintable(configPath()));
}

QStringList AdminSandbox::environment() const
{
    QStringList all = QProcess::systemEnvironment();
    all << QStringLiteral("HOME=") + path(QStringLiteral("home"))
        << QStringLiteral("XDG_CONFIG_HOME=") + path(QStringLiteral("home/config"))
        << QStringLiteral("XDG_DATA_HOME=") + path(QStringLiteral("home/data"))
        << QStringLiteral("KODMS_CONFIG=") + configPath() << extraEnvironment;
    return all;
}

AdminRun AdminSandbox::run(const QStringList &arguments, const QByteArray &input) const
{
    OrdinaryProcess process;
    process.setEnvironment(environment());
    process.start(QStringLiteral(KODMS_ADMIN_PROGRAM), arguments);
    if (!process.waitForStarted(TimeoutMs))
        return {};
    process.write(input);
    process.closeWriteChannel();
    return finish(process);
}

AdminRun AdminSandbox::finish(QProcess &process)
{
    AdminRun run;
    const bool finished =
        process.state() == QProcess::NotRunning || process.waitForFinished(TimeoutMs);
    run.output = process.readAllStandardOutput();
    run.errors = process.readAllStandardError();
    if (finished && process.exitStatus() == QProcess::NormalExit)
        run.code = process.exitCode();
    return run;
}

AdminRun AdminSandbox::runJson(const QStringList &arguments, const QByteArray &input) const
{
    return run(arguments + QStringList{QStringLiteral("--json")}, input);
}

QString AdminSandbox::makeArchive(const QString &below, const QByteArray &content) const
{
    const QByteArray archive =
        gzipped(rawTar({{"job/steps/features", content}, {"job/steps/说明.txt", "线路板"}}));
    return write(below, archive);
}

QString AdminSandbox::queried(const QString &sql) const
{
    return column(sql).value(0);
}

QStringList AdminSandbox::column(const QString &sql) const
{
    return PlainConnection(m_database.settings()).texts(sql);
}

void AdminSandbox::empty(const QString &table) const
{
    const PlainConnection connection(m_database.settings());
    connection.ignoreReferences();
    connection.run(QStringLiteral("DELETE FROM ") + table);
}

QStringList AdminSandbox::filesBelow(const QString &below) const
{
    QStringList files;
    QDirIterator each(path(below), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (each.hasNext()) {
        each.next();
        files << each.filePath() + QLatin1Char(' ') + QString::number(each.fileInfo().size());
    }
    files.sort();
    return files;
}

AdminRun AdminSandbox::init() const
{
    return run({QStringLiteral("init"), QStringLiteral("--login"), QString::fromLatin1(AdminLogin),
                QStringLiteral("--name"), QStringLiteral("主管"), QStringLiteral("--password-file"),
                QStringLiteral("-")},
               QByteArray(AdminPassword) + '\n');
}

bool AdminSandbox::hasInstallation() const
{
    return TestDatabase::isServer() ? !PlainConnection(m_database.settings()).tables().isEmpty()
                                    : QFileInfo::exists(configPath());
}

void AdminSandbox::damage() const
{
    if (TestDatabase::isServer())
        PlainConnection(m_database.settings()).run(QStringLiteral("DROP TABLE schema_version"));
    else
        write(QStringLiteral("place/kodms.db"), QByteArray(20000, 'x'));
}

QString AdminSandbox::databaseName() const
{
    return TestDatabase::isServer() ? m_database.settings().name : QStringLiteral("kodms.db");
}

QString AdminSandbox::write(const QString &below, const QByteArray &bytes) const
{
    QDir().mkpath(QFileInfo(path(below)).path());
    QFile file(path(below));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return {};
    return file.fileName();
}

} // namespace KODMS::Tests
