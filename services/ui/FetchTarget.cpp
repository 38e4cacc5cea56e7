// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/FetchTarget.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace KODMS::Services {

namespace {

constexpr int LongestName = 200;

bool isReservedOnWindows(const QString &stem)
{
    static const QRegularExpression devices(QStringLiteral("^(con|prn|aux|nul|com[0-9]|lpt[0-9])$"),
                                            QRegularExpression::CaseInsensitiveOption);
    return devices.match(stem.section(QLatin1Char('.'), 0, 0).trimmed()).hasMatch();
}

bool isPlainName(const QString &name)
{
    if (name.isEmpty() || name.size() > LongestName || name.startsWith(QLatin1Char('.')))
        return false;
    static const QString forbidden = QStringLiteral("/\\:*?\"<>|");
    for (const QChar character : name) {
        if (character < QLatin1Char(' ') || character == QChar(0x7f) ||
            character == QChar::ReplacementCharacter || forbidden.contains(character))
            return false;
    }
    return !isReservedOnWindows(name);
}

bool isPlainType(const QString &type)
{
    static const QRegularExpression pattern(QStringLiteral("^[A-Za-z0-9][A-Za-z0-9._-]{0,31}\\z"));
    return pattern.match(type).hasMatch();
}

} // namespace

Result<QString> fetchTarget(const QString &downloadDir, const QString &jobName, const QString &type)
{
    if (downloadDir.isEmpty())
        return Outcome::failure(QCoreApplication::translate("FetchTarget", "没有配置下载文件夹"),
                                QStringLiteral("no download folder is configured"));
    if (!isPlainName(jobName))
        return Outcome::failure(
            QCoreApplication::translate("FetchTarget", "料号名称不能用作文件名"),
            QStringLiteral("the job name cannot be a file name"));
    if (!isPlainType(type))
        return Outcome::failure(
            QCoreApplication::translate("FetchTarget", "文件类型不能用作文件后缀"),
            QStringLiteral("the type cannot be a suffix"));
    return QString(downloadDir + jobName + QLatin1Char('.') + type);
}

} // namespace KODMS::Services
