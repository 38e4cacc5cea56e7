// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/Preferences.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QVariant>

#include <utility>

namespace KODMS::Host {

namespace {

QVariant read(const QString &file, const QString &key)
{
    return QSettings(file, QSettings::IniFormat).value(key);
}

void write(const QString &file, const QString &key, const QVariant &value)
{
    QSettings(file, QSettings::IniFormat).setValue(key, value);
}

QString ofUser(int userId, const QString &key)
{
    return QStringLiteral("user-%1/%2").arg(userId).arg(key);
}

} // namespace

Preferences::Preferences(QString filePath) : m_filePath(std::move(filePath)) {}

QString Preferences::fileBeside(const QString &configPath)
{
    return QFileInfo(configPath).dir().filePath(QStringLiteral("kodms-desk.ini"));
}

QString Preferences::language() const
{
    const QString stored = read(m_filePath, QStringLiteral("language")).toString();
    return stored == QLatin1String("en") ? stored : QStringLiteral("zh");
}

void Preferences::setLanguage(const QString &language)
{
    write(m_filePath, QStringLiteral("language"), language);
}

QString Preferences::lastLogin() const
{
    return read(m_filePath, QStringLiteral("lastLogin")).toString();
}

void Preferences::setLastLogin(const QString &login)
{
    write(m_filePath, QStringLiteral("lastLogin"), login);
}

bool Preferences::highContrastStatus(int userId) const
{
    return read(m_filePath, ofUser(userId, QStringLiteral("highContrastStatus"))).toBool();
}

void Preferences::setHighContrastStatus(int userId, bool on)
{
    write(m_filePath, ofUser(userId, QStringLiteral("highContrastStatus")), on);
}

bool Preferences::automaticRefresh(int userId) const
{
    return read(m_filePath, ofUser(userId, QStringLiteral("automaticRefresh"))).toBool();
}

void Preferences::setAutomaticRefresh(int userId, bool on)
{
    write(m_filePath, ofUser(userId, QStringLiteral("automaticRefresh")), on);
}

QByteArray Preferences::windowGeometry(int userId) const
{
    return read(m_filePath, ofUser(userId, QStringLiteral("geometry"))).toByteArray();
}

void Preferences::setWindowGeometry(int userId, const QByteArray &geometry)
{
    write(m_filePath, ofUser(userId, QStringLiteral("geometry")), geometry);
}

QByteArray Preferences::panels(int userId) const
{
    return read(m_filePath, ofUser(userId, QStringLiteral("panels"))).toByteArray();
}

void Preferences::setPanels(int userId, const QByteArray &state)
{
    write(m_filePath, ofUser(userId, QStringLiteral("panels")), state);
}

QByteArray Preferences::columns(int userId, const QString &table) const
{
    return read(m_filePath, ofUser(userId, QStringLiteral("columns-") + table)).toByteArray();
}

void Preferences::setColumns(int userId, const QString &table, const QByteArray &text)
{
    write(m_filePath, ofUser(userId, QStringLiteral("columns-") + table), text);
}

} // namespace KODMS::Host
