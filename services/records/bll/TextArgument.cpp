// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <algorithm>

namespace KODMS::Services {

namespace {

/// Four bytes are the most that UTF-8 spends on a character.
constexpr std::size_t BytesPerCharacter = 4;

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

} // namespace

TextArgument::TextArgument(const std::string &bytes, int longest)
{
    const auto limit = static_cast<std::size_t>(longest) * BytesPerCharacter;
    if (bytes.size() <= limit) {
        QTextCodec::ConverterState state;
        m_text = QTextCodec::codecForName("UTF-8")->toUnicode(
            bytes.data(), static_cast<int>(bytes.size()), &state);
        if (state.invalidChars > 0 || state.remainingChars > 0) {
            m_cause = QStringLiteral("a text is not UTF-8");
            m_userText = tr("文本编码无效");
        } else if (m_text.contains(QChar(0))) {
            m_cause = QStringLiteral("a text contains NUL");
            m_userText = tr("文本中含有空字符");
        }
    }
    if (bytes.size() > limit || m_text.size() > longest) {
        m_cause = QStringLiteral("a text of %1 bytes is too long").arg(bytes.size());
        m_userText = tr("文本过长，最多 %1 个字符").arg(longest);
    }
    if (!isValid() || m_text.isNull())
        m_text = QStringLiteral(""); // empty, which the database tells from null
}

QString shortText(const std::string &bytes)
{
    constexpr std::size_t longest = 80;
    QString text =
        QString::fromUtf8(bytes.data(), static_cast<int>(std::min(bytes.size(), longest)));
    for (QChar &character : text) {
        if (!character.isPrint() && !character.isSurrogate())
            character = QLatin1Char('?');
    }
    return text;
}

} // namespace KODMS::Services
