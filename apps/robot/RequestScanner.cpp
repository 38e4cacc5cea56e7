// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/RequestScanner.h"

namespace KODMS::Robot {

namespace {

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

} // namespace

RequestScanner::State RequestScanner::feed(const char *data, int size)
{
    if (m_state != State::Incomplete)
        return m_state;
    for (int i = 0; i < size && m_state != State::Faulty; ++i)
        take(data[i]);
    return m_state;
}

void RequestScanner::take(char byte)
{
    if (m_state == State::Complete) {
        if (!isBlank(byte))
            fail(QStringLiteral("something follows the object"));
        return;
    }
    if (m_bytes.size() == MostBytes) {
        fail(QStringLiteral("more than %1 bytes").arg(MostBytes));
        return;
    }
    m_bytes.append(byte);
    if (m_inText)
        takeInText(byte);
    else
        takeOutside(byte);
}

void RequestScanner::takeInText(char byte)
{
    if (m_isEscaped)
        m_isEscaped = false;
    else if (byte == '\\')
        m_isEscaped = true;
    else if (byte == '"')
        m_inText = false;
}

void RequestScanner::takeOutside(char byte)
{
    if (m_level == 0 && byte != '{') {
        if (!isBlank(byte))
            fail(QStringLiteral("not a JSON object"));
        return;
    }
    switch (byte) {
    case '{':
    case '[':
        open();
        return;
    case '}':
    case ']':
        close();
        return;
    case '"':
        m_inText = true;
        return;
    case ':':
        ++m_members;
        return;
    default:
        return;
    }
}

void RequestScanner::open()
{
    if (++m_level > DeepestLevel)
        fail(QStringLiteral("nested too deeply"));
}

void RequestScanner::close()
{
    if (--m_level == 0)
        m_state = State::Complete;
}

void RequestScanner::fail(const QString &why)
{
    m_state = State::Faulty;
    m_fault = why;
}

} // namespace KODMS::Robot
