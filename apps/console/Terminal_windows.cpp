// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/console/Interrupt.h"
#include "apps/console/Terminal.h"

#include <windows.h>

namespace KODMS::Console {

namespace {

HANDLE input()
{
    return ::GetStdHandle(STD_INPUT_HANDLE);
}

bool isConsole(HANDLE handle)
{
    DWORD mode = 0;
    return ::GetConsoleMode(handle, &mode) != 0;
}

/// Typing stays invisible as long as it lives.
class EchoOff {
public:
    EchoOff()
    {
        if (::GetConsoleMode(input(), &m_before))
            ::SetConsoleMode(input(), m_before & ~DWORD{ENABLE_ECHO_INPUT});
    }

    ~EchoOff()
    {
        if (m_before != 0)
            ::SetConsoleMode(input(), m_before);
    }

    EchoOff(const EchoOff &) = delete;
    EchoOff &operator=(const EchoOff &) = delete;

private:
    DWORD m_before = 0;
};

/// A console takes characters, files and pipes take UTF-8.
void writeRaw(DWORD stream, const QByteArray &bytes)
{
    const HANDLE handle = ::GetStdHandle(stream);
    DWORD written = 0;
    if (isConsole(handle)) {
        const std::wstring text = QString::fromUtf8(bytes).toStdWString();
        ::WriteConsoleW(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
        return;
    }
    const char *rest = bytes.constData();
    auto left = static_cast<DWORD>(bytes.size());
    while (left > 0 && ::WriteFile(handle, rest, left, &written, nullptr) && written > 0) {
        rest += written;
        left -= written;
    }
}

/// One character at a time, so that what follows the line stays unread for the next question.
bool readConsoleLine(QString *line)
{
    wchar_t character = 0;
    DWORD count = 0;
    line->clear();
    while (::ReadConsoleW(input(), &character, 1, &count, nullptr) && count == 1 &&
           character != L'\n')
        *line += QChar(static_cast<ushort>(character));
    return count == 1;
}

bool readPipedLine(QString *line)
{
    QByteArray bytes;
    char byte = 0;
    DWORD count = 0;
    while (::ReadFile(input(), &byte, 1, &count, nullptr) && count == 1 && byte != '\n')
        bytes += byte;
    *line = QString::fromUtf8(bytes);
    return count == 1 || !bytes.isEmpty();
}

} // namespace

bool Terminal::isInteractive()
{
    return isConsole(input());
}

bool Terminal::ask(const QString &question, bool secret, QString *answer)
{
    const QByteArray shown = question.toUtf8() + ' ';
    if (!secret) {
        writeRaw(STD_ERROR_HANDLE, shown);
        return readLine(answer);
    }
    bool read = false;
    {
        // Before the question: a quick answer would be shown.
        const EchoOff quiet;
        writeRaw(STD_ERROR_HANDLE, shown);
        read = readLine(answer);
    }
    writeRaw(STD_ERROR_HANDLE, "\r\n");
    return read;
}

bool Terminal::readLine(QString *line)
{
    const bool read = isInteractive() ? readConsoleLine(line) : readPipedLine(line);
    if (Interrupt::wasAskedFor())
        return false;
    if (line->endsWith(QLatin1Char('\r')))
        line->chop(1);
    return read;
}

bool Terminal::isErrorShown()
{
    return isConsole(::GetStdHandle(STD_ERROR_HANDLE));
}

void Terminal::showForNow(const QString &line)
{
    // The console understands the sequence only when it is told to.
    const HANDLE handle = ::GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    if (::GetConsoleMode(handle, &mode))
        ::SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    writeRaw(STD_ERROR_HANDLE, "\r\033[K" + line.toUtf8());
}

void Terminal::writeError(const QString &line)
{
    writeRaw(STD_ERROR_HANDLE, line.toUtf8() + "\r\n");
}

void Terminal::writeOutput(const QByteArray &bytes)
{
    writeRaw(STD_OUTPUT_HANDLE, bytes);
}

} // namespace KODMS::Console
