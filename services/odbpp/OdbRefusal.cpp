// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/OdbRefusal.h"

#include "services/archive/EntryNames.h"
#include "services/archive/EntryPath.h"
#include "services/notices/OneLine.h"

#include <QCoreApplication>

#include <algorithm>

namespace KODMS::Services {

namespace {

constexpr std::size_t LongestQuote = 40;
constexpr int LongestName = 255;
constexpr int LongestPath = 200;

QString tr(const char *text)
{
    return QCoreApplication::translate("OdbJob", text);
}

} // namespace

Outcome odbRefused(const QString &file, qint64 line, const LineRefusal &why)
{
    const QString path = oneLine(file.right(LongestPath));
    if (line == 0)
        return Outcome::failure(tr("%1：%2").arg(path, why.text),
                                QStringLiteral("%1: %2").arg(path, why.cause));
    return Outcome::failure(tr("%1 第 %2 行：%3").arg(path).arg(line).arg(why.text),
                            QStringLiteral("%1 line %2: %3").arg(path).arg(line).arg(why.cause));
}

QString odbQuoted(std::string_view bytes)
{
    const auto size = std::min(bytes.size(), LongestQuote);
    QString text = oneLine(QString::fromUtf8(bytes.data(), static_cast<int>(size)));
    return bytes.size() > LongestQuote ? text + QChar(0x2026) : text;
}

QString odbName(std::string_view bytes)
{
    if (bytes.size() > LongestName)
        return {};
    const auto text = EntryNames().decode(QByteArray(bytes.data(), static_cast<int>(bytes.size())));
    if (!text || *text == QLatin1String(".") || *text == QLatin1String(".."))
        return {};
    const bool isName = std::all_of(text->cbegin(), text->cend(), [](QChar c) {
        return c.unicode() >= 0x20 && c != QLatin1Char('/') && c != QLatin1Char('\\');
    });
    return isName ? *text : QString();
}

QString odbKey(const QString &name)
{
    const auto path = EntryPath::of(name);
    return (path && !path.value.path.isEmpty() ? path.value.path : name).toCaseFolded();
}

} // namespace KODMS::Services
