// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/EntryNames.h"

#include <QTextCodec>

#include <algorithm>

namespace KODMS::Services {

namespace {

std::optional<QString> decodedAs(const char *encoding, const QByteArray &bytes)
{
    QTextCodec *codec = QTextCodec::codecForName(encoding);
    if (!codec)
        return std::nullopt;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text = codec->toUnicode(bytes.constData(), bytes.size(), &state);
    const bool isWhole = state.invalidChars == 0 && state.remainingChars == 0;
    if (!isWhole || text.contains(QChar(QChar::ReplacementCharacter)))
        return std::nullopt;
    return text;
}

bool isUtf8(const QByteArray &bytes)
{
    return decodedAs("UTF-8", bytes).has_value();
}

} // namespace

void EntryNames::setUnmarked(const QSet<QByteArray> &names)
{
    m_gb18030.clear();
    if (!std::all_of(names.cbegin(), names.cend(), isUtf8))
        m_gb18030 = names;
}

std::optional<QString> EntryNames::decode(const QByteArray &name) const
{
    if (!m_gb18030.contains(name))
        if (auto text = decodedAs("UTF-8", name))
            return text;
    return decodedAs("GB18030", name);
}

} // namespace KODMS::Services
