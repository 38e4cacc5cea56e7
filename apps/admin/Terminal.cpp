// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/Terminal.h"

#include <termios.h>
#include <unistd.h>

#include <cstdio>

namespace KODMS::Admin {

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
    writeRaw(stderr, question.toLocal8Bit() + ' ');
    if (!secret)
        return readLine(answer);
    bool read = false;
    {
        const EchoOff quiet;
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
    while ((count = ::read(STDIN_FILENO, &byte, 1)) == 1 && byte != '\n')
        bytes += byte;
    if (bytes.endsWith('\r'))
        bytes.chop(1);
    *line = QString::fromLocal8Bit(bytes);
    return count == 1 || (count == 0 && !bytes.isEmpty());
}

void Terminal::writeError(const QString &line)
{
    writeRaw(stderr, line.toLocal8Bit() + '\n');
}

void Terminal::writeOutput(const QByteArray &bytes)
{
    writeRaw(stdout, bytes);
}

} // namespace KODMS::Admin
