// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/config/IniFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTextCodec>

namespace KODMS::Services {

namespace {

constexpr qint64 LargestFile = 1024 * 1024;

QString tr(const char *text)
{
    return QCoreApplication::translate("Configuration", text);
}

Result<QByteArray> readAll(const QString &path)
{
    if (QFileInfo(path).isDir())
        return Outcome::failure(tr("配置文件 %1 是一个文件夹，需要一个文本文件").arg(path));
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        return Outcome::failure(tr("配置文件 %1 不是普通文件").arg(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Outcome::failure(tr("无法读取配置文件 %1：%2").arg(path, file.errorString()));
    if (file.size() > LargestFile)
        return Outcome::failure(tr("配置文件 %1 超过 1 MiB，不是有效的配置文件").arg(path));
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return Outcome::failure(tr("无法读取配置文件 %1：%2").arg(path, file.errorString()));
    return bytes;
}

QString withoutQuotes(const QString &value)
{
    const QChar quote(QLatin1Char('"'));
    if (value.size() >= 2 && value.startsWith(quote) && value.endsWith(quote))
        return value.mid(1, value.size() - 2);
    return value;
}

} // namespace

Result<IniFile> IniFile::read(const QString &path)
{
    const Result<QByteArray> bytes = readAll(path);
    if (!bytes)
        return bytes.outcome;
    QTextCodec::ConverterState state;
    const QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.value.constData(),
                                                                      bytes.value.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0 || text.contains(QChar(0)))
        return Outcome::failure(tr("配置文件 %1 不是 UTF-8 文本").arg(path));
    IniFile ini;
    const Outcome parsed = ini.parse(path, text);
    if (!parsed)
        return parsed;
    return ini;
}

std::optional<QString> IniFile::value(const QString &section, const QString &key) const
{
    for (const Entry &entry : m_entries) {
        if (entry.section == section && entry.key == key)
            return entry.value;
    }
    return std::nullopt;
}

Outcome IniFile::parse(const QString &path, const QString &text)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    QString section;
    for (int i = 0; i < lines.size(); ++i) {
        const Outcome outcome = parseLine(path, i + 1, lines[i].trimmed(), section);
        if (!outcome)
            return outcome;
    }
    return Outcome::success();
}

Outcome IniFile::parseLine(const QString &path, int number, const QString &line, QString &section)
{
    if (line.isEmpty() || line.startsWith(QLatin1Char(';')) || line.startsWith(QLatin1Char('#')))
        return Outcome::success();
    if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
        section = line.mid(1, line.size() - 2).trimmed();
        return Outcome::success();
    }
    const int equals = line.indexOf(QLatin1Char('='));
    if (equals < 1 || section.isEmpty())
        return Outcome::failure(tr("配置文件 %1 第 %2 行无法识别：%3（应为 [段] 或 键 = 值）")
                                    .arg(path, QString::number(number), line.left(80)));
    const QString key = line.left(equals).trimmed();
    if (value(section, key))
        return Outcome::failure(tr("配置文件 %1 第 %2 行：[%3] %4 重复出现")
                                    .arg(path, QString::number(number), section, key));
    m_entries.append({section, key, withoutQuotes(line.mid(equals + 1).trimmed()), number});
    return Outcome::success();
}

} // namespace KODMS::Services
