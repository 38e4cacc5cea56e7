// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/console/Terminal.h"

#include "apps/console/Interrupt.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>

namespace KODMS::Console {

namespace {

/// Typing stays invisible as long as it lives.
class EchoOff {
public:
    EchoOff()
    {
        m_changed = tcgetattr(STDIN_FILENO, &m_before) == 0;
        if (!m_changed)
            return;
        termios quiet = m_before;
        quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
    }

    ~EchoOff()
    {
        if (m_changed)
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before);
    }

    EchoOff(const EchoOff &) = delete;
    EchoOff &operator=(const EchoOff &) = delete;

private:
    termios m_before = {};
    bool m_changed = false;
};

/// False when Ctrl-C was pressed, also in the moment before the waiting begins, which a
/// plain read would sleep through.
bool waitForInput()
{
    constexpr int glanceMs = 100;
    pollfd input{STDIN_FILENO, POLLIN, 0};
    while (!Interrupt::wasAskedFor()) {
        if (::poll(&input, 1, glanceMs) > 0)
            return true;
    }
    return false;
}

void writeRaw(FILE *stream, const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}

} // namespace

bool Terminal::isInteractive()
{
    return isatty(STDIN_FILENO) == 1;
}

bool Terminal::ask(const QString &question, bool secret, QString *answer)
{
    const QByteArray shown = question.toLocal8Bit() + ' ';
    if (!secret) {
        writeRaw(stderr, shown);
        return readLine(answer);
    }
    bool read = false;
    {
        // Before the question: a quick answer would be shown, and dropped with the change.
        const EchoOff quiet;
        writeRaw(stderr, shown);
        read = readLine(answer);
    }
    writeRaw(stderr, "\n");
    return read;
}

bool Terminal::readLine(QString *line)
{
    // Byte by byte, so that what follows the line stays unread for the next question.
    QByteArray bytes;
    char byte = 0;
    ssize_t count = 0;
    while (waitForInput() && (count = ::read(STDIN_FILENO, &byte, 1)) == 1 && byte != '\n')
        bytes += byte;
    if (Interrupt::wasAskedFor())
        return false;
    if (bytes.endsWith('\r'))
        bytes.chop(1);
    *line = QString::fromLocal8Bit(bytes);
    return count == 1 || (count == 0 && !bytes.isEmpty());
}

bool Terminal::isErrorShown()
{
    return isatty(STDERR_FILENO) == 1;
}

void Terminal::showForNow(const QString &line)
{
    writeRaw(stderr, "\r\033[K" + line.toLocal8Bit());
}

void Terminal::writeError(const QString &line)
{
    writeRaw(stderr, line.toLocal8Bit() + '\n');
}

void Terminal::writeOutput(const QByteArray &bytes)
{
    writeRaw(stdout, bytes);
}

} // namespace KODMS::Console
