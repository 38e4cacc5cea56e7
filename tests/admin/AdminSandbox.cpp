// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"

#include "tests/support/PlainConnection.h"
#include "tests/support/WithoutPrivilege.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QProcess>

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

namespace KODMS::Tests {

namespace {

constexpr int TimeoutMs = 60'000;

AdminRun finish(QProcess &process)
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

/// The controlling end of a new terminal; negative when there is none.
int openTerminal()
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || (grantpt(terminal) == 0 && unlockpt(terminal) == 0))
        return terminal;
    ::close(terminal);
    return -1;
}

/// Everything that can be read from the terminal without waiting.
QByteArray readShown(int terminal)
{
    QByteArray shown;
    pollfd waiting{terminal, POLLIN, 0};
    char buffer[512];
    while (poll(&waiting, 1, 0) == 1 && (waiting.revents & POLLIN)) {
        const ssize_t count = ::read(terminal, buffer, sizeof buffer);
        if (count <= 0)
            break;
        shown.append(buffer, static_cast<int>(count));
    }
    return shown;
}

bool watchesForTermination(qint64 process)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    const QByteArray mark = "SigCgt:";
    const QByteArray all = status.readAll();
    const QByteArray line = all.mid(all.indexOf(mark) + mark.size());
    const quint64 caught = line.left(line.indexOf('\n')).trimmed().toULongLong(nullptr, 16);
    return (caught >> (SIGTERM - 1) & 1) != 0;
}

} // namespace

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

AdminRun AdminSandbox::runJson(const QStringList &arguments, const QByteArray &input) const
{
    return run(arguments + QStringList{QStringLiteral("--json")}, input);
}

AdminRun AdminSandbox::runOnTerminal(const QStringList &arguments, const QByteArray &typed,
                                     QByteArray *shown) const
{
    const int terminal = openTerminal();
    if (terminal < 0)
        return {};
    QProcess process;
    process.setEnvironment(environment());
    process.setStandardInputFile(QString::fromLocal8Bit(ptsname(terminal)));
    process.setReadChannel(QProcess::StandardError);
    process.start(QStringLiteral(KODMS_ADMIN_PROGRAM), arguments);
    QByteArray questions;
    const QList<QByteArray> lines = typed.split('\n');
    for (const QByteArray &line : lines) {
        // A person answers when the question is there; what is typed earlier would be shown.
        while (!questions.endsWith(": ") && process.waitForReadyRead(TimeoutMs))
            questions += process.readAllStandardError();
        if (!questions.endsWith(": ") ||
            ::write(terminal, line.constData(), static_cast<size_t>(line.size())) < 0 ||
            ::write(terminal, "\n", 1) < 0)
            break;
        questions += '\n';
    }
    AdminRun run = finish(process);
    run.errors.prepend(questions);
    *shown = readShown(terminal);
    ::close(terminal);
    return run;
}

AdminRun AdminSandbox::interruptAtQuestion(const QStringList &arguments) const
{
    const int terminal = openTerminal();
    if (terminal < 0)
        return {};
    QProcess process;
    process.setEnvironment(environment());
    process.setStandardInputFile(QString::fromLocal8Bit(ptsname(terminal)));
    process.setReadChannel(QProcess::StandardError);
    process.start(QStringLiteral(KODMS_ADMIN_PROGRAM), arguments);
    QByteArray question;
    while (!question.endsWith(": ") && process.waitForReadyRead(TimeoutMs))
        question += process.readAllStandardError();
    process.terminate();
    AdminRun run = finish(process);
    run.errors.prepend(question);
    ::close(terminal);
    return run;
}

AdminRun AdminSandbox::runAndInterrupt(const QStringList &arguments, int delayMs) const
{
    QProcess process;
    process.setEnvironment(environment());
    process.start(QStringLiteral(KODMS_ADMIN_PROGRAM), arguments);
    process.closeWriteChannel();
    if (process.waitForFinished(delayMs))
        return finish(process); // too early to interrupt: the test compares the exit code
    process.terminate();
    return finish(process);
}

AdminRun AdminSandbox::runInterrupted(const QStringList &arguments,
                                      const std::function<void()> &afterwards) const
{
    QProcess process;
    process.setEnvironment(environment());
    process.start(QStringLiteral(KODMS_ADMIN_PROGRAM), arguments);
    process.closeWriteChannel();
    while (process.waitForStarted(TimeoutMs) && !watchesForTermination(process.processId()) &&
           !process.waitForFinished(10)) {
    }
    process.terminate();
    afterwards();
    return finish(process);
}

QString AdminSandbox::makeArchive(const QString &below, const QByteArray &content) const
{
    const QString folder = below + QStringLiteral(".content/job/steps");
    write(folder + QStringLiteral("/features"), content);
    write(folder + QStringLiteral("/说明.txt"), "线路板");
    QDir().mkpath(QFileInfo(path(below)).path());
    const int code = QProcess::execute(
        QStringLiteral("tar"), {QStringLiteral("-czf"), path(below), QStringLiteral("-C"),
                                path(below + QStringLiteral(".content")), QStringLiteral("job")});
    return code == 0 ? path(below) : QString();
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
