// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/EntryPath.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

namespace KODMS::Services {

namespace {

constexpr int MaxDepth = 128;
constexpr int MaxPartBytes = 255;
constexpr int MaxPathBytes = 2048;

struct EntryPathTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::EntryPath)

public:
    static Outcome refused(const QString &entry, const QString &reason, const QString &cause)
    {
        return Outcome::failure(tr("压缩包中的条目被拒绝：%1（%2）").arg(entry.left(200), reason),
                                QStringLiteral("entry %1: %2").arg(entry.left(200), cause));
    }

    static Outcome absolute(const QString &entry)
    {
        return refused(entry, tr("绝对路径"), QStringLiteral("absolute path"));
    }

    static Outcome leaves(const QString &entry)
    {
        return refused(entry, tr("路径超出目标文件夹"), QStringLiteral("leaves the target"));
    }

    static Outcome tooLong(const QString &entry)
    {
        return refused(entry, tr("路径过长"), QStringLiteral("path too long"));
    }

    static Outcome empty() { return refused(QString(), tr("没有名称"), QStringLiteral("no name")); }
};

bool isAbsolute(const QString &name)
{
    static const QRegularExpression drive(QStringLiteral("^[A-Za-z]:"));
    return name.startsWith(QLatin1Char('/')) || drive.match(name).hasMatch();
}

bool isReservedOnWindows(const QString &part)
{
    static const QRegularExpression reserved(
        QStringLiteral("^(con|prn|aux|nul|com[1-9¹²³]|lpt[1-9¹²³]|conin\\$|conout\\$) *(\\..*)?$"),
        QRegularExpression::CaseInsensitiveOption);
    return reserved.match(part).hasMatch();
}

bool isForbiddenOnWindows(QChar c)
{
    return c.unicode() < 0x20 || c.unicode() == 0x7f || QStringLiteral("<>:\"|?*").contains(c);
}

QString percent(QChar c)
{
    return QStringLiteral("%%1").arg(uint{c.unicode()}, 2, 16, QLatin1Char('0')).toUpper();
}

/// The part as Windows can hold it; unchanged when it can as it is.
QString mapped(const QString &part)
{
    QString result;
    for (const QChar c : part)
        result += isForbiddenOnWindows(c) ? percent(c) : QString(c);
    const QChar last = result.at(result.size() - 1);
    if (last == QLatin1Char('.') || last == QLatin1Char(' ')) {
        result.chop(1);
        result += percent(last);
    }
    return isReservedOnWindows(result) ? QLatin1Char('_') + result : result;
}

} // namespace

Outcome entryRefused(const QString &entry, const QString &reason, const QString &cause)
{
    return EntryPathTexts::refused(entry, reason, cause);
}

Result<EntryPath> EntryPath::of(const QString &name)
{
    const QString slashed = QString(name).replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (isAbsolute(slashed))
        return EntryPathTexts::absolute(name);
    EntryPath result;
    QStringList parts;
    for (const QString &part : slashed.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        if (part == QLatin1String("."))
            continue;
        if (part == QLatin1String(".."))
            return EntryPathTexts::leaves(name);
        parts << mapped(part);
        result.isMapped = result.isMapped || parts.last() != part;
        if (parts.last().toUtf8().size() > MaxPartBytes)
            return EntryPathTexts::tooLong(name);
    }
    result.path = parts.join(QLatin1Char('/'));
    if (parts.size() > MaxDepth || result.path.toUtf8().size() > MaxPathBytes)
        return EntryPathTexts::tooLong(name);
    if (parts.isEmpty() && name.isEmpty())
        return EntryPathTexts::empty();
    return result;
}

Result<EntryPath> EntryPath::ofLink(const QString &linkPath, const QString &text)
{
    const QString slashed = QString(text).replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (isAbsolute(slashed))
        return EntryPathTexts::leaves(linkPath);
    QStringList parts = linkPath.split(QLatin1Char('/'));
    parts.removeLast();
    for (const QString &part : slashed.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        if (part == QLatin1String("."))
            continue;
        if (part != QLatin1String(".."))
            parts << mapped(part);
        else if (parts.isEmpty())
            return EntryPathTexts::leaves(linkPath);
        else
            parts.removeLast();
    }
    return EntryPath{parts.join(QLatin1Char('/')), false};
}

} // namespace KODMS::Services
