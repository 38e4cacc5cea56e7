// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"

#include <QFile>
#include <QProcess>

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

namespace KODMS::Tests {

namespace {

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

bool AdminSandbox::hasTerminals()
{
    return true;
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

} // namespace KODMS::Tests
