// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/UnixTricks.h"

#include <QFile>
#include <QProcess>

#include <csignal>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace KODMS::Tests {

std::optional<int> exitCodeOfCopy(const std::function<int()> &work)
{
    constexpr int firstOfSignals = 128; // as shells say it
    const pid_t copy = ::fork();
    if (copy == 0)
        endAtOnce(work());
    int status = 0;
    if (copy < 0 || ::waitpid(copy, &status, 0) != copy)
        qFatal("the test cannot copy its process");
    return WIFEXITED(status) ? WEXITSTATUS(status) : firstOfSignals + WTERMSIG(status);
}

void endAtOnce(int code)
{
    ::_exit(code);
}

void killThisProcess()
{
    ::raise(SIGKILL);
    std::abort(); // never reached
}

bool withoutDescriptors(const std::function<void()> &work)
{
    rlimit before{};
    const int next = ::dup(0);
    if (next <= 0 || ::getrlimit(RLIMIT_NOFILE, &before) != 0)
        qFatal("the test cannot ask for its limits");
    ::close(next);
    const rlimit none{static_cast<rlim_t>(next), before.rlim_max};
    if (::setrlimit(RLIMIT_NOFILE, &none) != 0)
        qFatal("the test cannot set its limits");
    work();
    ::setrlimit(RLIMIT_NOFILE, &before);
    return true;
}

bool runInShell(const QString &folder, const QString &line)
{
    QProcess shell;
    shell.setWorkingDirectory(folder);
    shell.start(QStringLiteral("sh"), {QStringLiteral("-c"), line});
    if (!shell.waitForFinished() || shell.exitCode() != 0)
        qFatal("the shell could not: %s", qPrintable(line));
    return true;
}

bool makeLink(const QString &target, const QString &path)
{
    return QFile::link(target, path);
}

bool makePipe(const QString &path)
{
    return ::mkfifo(QFile::encodeName(path).constData(), S_IRUSR | S_IWUSR) == 0;
}

} // namespace KODMS::Tests
