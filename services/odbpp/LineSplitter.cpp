// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/LineSplitter.h"

#include <QCoreApplication>

#include <cstring>

namespace KODMS::Services {

namespace {

/// Longer than any record that a CAM system writes.
constexpr std::size_t LongestLine = std::size_t{1} << 20;
constexpr std::string_view ByteOrderMark = "\xef\xbb\xbf";

QString tr(const char *text)
{
    return QCoreApplication::translate("OdbJob", text);
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace

bool LineSplitter::refuse(const QString &text, const QString &cause)
{
    m_refusal = {text, cause};
    return false;
}

bool LineSplitter::take(std::string_view line)
{
    ++m_lines;
    if (m_lines == 1 && line.substr(0, ByteOrderMark.size()) == ByteOrderMark)
        line.remove_prefix(ByteOrderMark.size());
    if (line.size() > LongestLine)
        return refuse(tr("行过长"),
                      QStringLiteral("a line of more than %1 bytes").arg(LongestLine));
    if (std::memchr(line.data(), 0, line.size()) != nullptr)
        return refuse(tr("含有空字符，不是文本"), QStringLiteral("NUL"));
    if (m_reader.line(trimmed(line)))
        return true;
    m_refusal = m_reader.refusal();
    return false;
}

Outcome LineSplitter::add(const char *bytes, std::size_t size)
{
    while (size > 0) {
        const auto *end = static_cast<const char *>(std::memchr(bytes, '\n', size));
        const std::size_t length = end ? static_cast<std::size_t>(end - bytes) : size;
        const bool isWhole = m_open.empty();
        if (!isWhole || !end)
            m_open.append(bytes, length);
        if (end || m_open.size() > LongestLine) {
            const bool taken = take(isWhole && end ? std::string_view(bytes, length) : m_open);
            if (!taken)
                return odbRefused(m_file, m_lines, m_refusal);
            m_open.clear();
        }
        const std::size_t used = end ? length + 1 : length;
        bytes += used;
        size -= used;
    }
    return Outcome::success();
}

Outcome LineSplitter::finish()
{
    if (!m_open.empty() && !take(m_open))
        return odbRefused(m_file, m_lines, m_refusal);
    if (!m_reader.end())
        return odbRefused(m_file, m_lines, m_reader.refusal());
    return Outcome::success();
}

} // namespace KODMS::Services
