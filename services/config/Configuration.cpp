// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/config/Configuration.h"

#include "services/config/ConfigurationKeys.h"
#include "services/config/IniFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Configuration", text);
}

QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

Outcome badValue(const Configuration &configuration, const ConfigurationKey &key,
                 const QString &value, const QString &accepted)
{
    return Outcome::failure(
        tr("配置文件 %1：[%2] %3 = “%4” 无效，可接受的值：%5")
            .arg(configuration.filePath, latin1(key.section), latin1(key.name), value, accepted));
}

Outcome missingFor(const Configuration &configuration, const char *section, const char *key,
                   const char *chooser, const QString &chosen)
{
    return Outcome::failure(
        tr("配置文件 %1：[%2] %3 为空，而 %4 = %5 需要它")
            .arg(configuration.filePath, latin1(section), latin1(key), latin1(chooser), chosen));
}

bool isEmbedded(const DatabaseSettings &database)
{
    return database.driver == QLatin1String("sqlite");
}

/// What one key alone cannot tell: the chosen driver and kind need their place.
Outcome checkTogether(const Configuration &c)
{
    const bool embedded = isEmbedded(c.database);
    if (embedded && c.database.path.isEmpty())
        return missingFor(c, "database", "path", "driver", c.database.driver);
    if (!embedded && c.database.host.isEmpty())
        return missingFor(c, "database", "host", "driver", c.database.driver);
    if (!embedded && c.database.name.isEmpty())
        return missingFor(c, "database", "name", "driver", c.database.driver);
    const bool folder = c.fileStore.kind == QLatin1String("folder");
    if (folder && c.fileStore.root.isEmpty())
        return missingFor(c, "fileStore", "root", "kind", c.fileStore.kind);
    if (!folder && c.fileStore.uri.isEmpty())
        return missingFor(c, "fileStore", "uri", "kind", c.fileStore.kind);
    return Outcome::success();
}

bool endsInSeparator(const QString &path)
{
    return path.endsWith(QLatin1Char('/')) || path.endsWith(QDir::separator());
}

void notePath(Configuration &configuration, const char *key, const QString &path)
{
    if (!endsInSeparator(path))
        configuration.notices
            << tr("配置文件 %1：[paths] %2 = “%3” 末尾没有路径分隔符，文件名会直接接在后面")
                   .arg(configuration.filePath, latin1(key), path);
}

bool isKnown(const IniFile::Entry &entry)
{
    for (const ConfigurationKey &key : ConfigurationKey::all()) {
        if (entry.section == latin1(key.section) && entry.key == latin1(key.name))
            return true;
    }
    return false;
}

void noteOddities(Configuration &configuration, const IniFile &ini)
{
    for (const IniFile::Entry &entry : ini.entries()) {
        if (!isKnown(entry))
            configuration.notices << tr("配置文件 %1 第 %2 行：未知的键 [%3] %4，已忽略")
                                         .arg(configuration.filePath, QString::number(entry.line),
                                              entry.section, entry.key);
    }
    notePath(configuration, "staging", configuration.paths.staging);
    notePath(configuration, "download", configuration.paths.download);
}

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/kodms");
}

/// The defaults beside the file are not written out: they follow the file when its folder is
/// moved or copied, while a written path would go on naming the old place.
bool followsTheFile(const QString &value, const ConfigurationKey &key, const Configuration &beside)
{
    const QString folder = QFileInfo(beside.filePath).absolutePath() + QLatin1Char('/');
    return value.startsWith(folder) && value == key.get(beside);
}

QByteArray asIni(const Configuration &configuration)
{
    const Configuration beside = Configuration::defaultsFor(configuration.filePath);
    QString text;
    const char *section = "";
    for (const ConfigurationKey &key : ConfigurationKey::all()) {
        if (qstrcmp(section, key.section) != 0) {
            text += (*section ? QStringLiteral("\n[") : QStringLiteral("[")) + latin1(key.section) +
                    QStringLiteral("]\n");
            section = key.section;
        }
        const QString value = key.get(configuration);
        if (followsTheFile(value, key, beside))
            text +=
                QStringLiteral("; ") + latin1(key.name) + QStringLiteral(": beside this file\n");
        else
            text += latin1(key.name) + QStringLiteral(" = ") + value + QStringLiteral("\n");
    }
    return text.toUtf8();
}

} // namespace

DatabaseSettings DatabaseSettings::patient() const
{
    DatabaseSettings settings = *this;
    settings.statementTimeoutMs = 0;
    settings.silenceTimeoutMs = 0;
    return settings;
}

Configuration Configuration::defaults(const QString &iniPath, const QString &dataFolder)
{
    Configuration configuration;
    configuration.filePath = QFileInfo(iniPath).absoluteFilePath();
    configuration.database.driver = QStringLiteral("sqlite");
    configuration.database.path = dataFolder + QStringLiteral("/kodms.db");
    configuration.database.sslMode = QStringLiteral("prefer");
    configuration.fileStore.kind = QStringLiteral("folder");
    configuration.fileStore.root = dataFolder + QStringLiteral("/files");
    configuration.fileStore.database = QStringLiteral("kodms");
    configuration.fileStore.bucket = QStringLiteral("jobs");
    configuration.paths.staging = dataFolder + QStringLiteral("/staging/");
    configuration.paths.download = dataFolder + QStringLiteral("/download/");
    configuration.robot.host = QStringLiteral("127.0.0.1");
    return configuration;
}

Configuration Configuration::defaultsFor(const QString &iniPath)
{
    const QFileInfo file(iniPath);
    const bool isUsers = file.absoluteFilePath() == QFileInfo(userPath()).absoluteFilePath();
    return defaults(iniPath, isUsers ? dataFolder() : file.absolutePath());
}

Result<Configuration> Configuration::load(const QString &iniPath)
{
    const QString path = QFileInfo(iniPath.isEmpty() ? defaultPath() : iniPath).absoluteFilePath();
    Configuration configuration = defaultsFor(path);
    if (!QFileInfo::exists(path)) {
        if (path != QFileInfo(userPath()).absoluteFilePath())
            return Outcome::failure(tr("配置文件 %1 不存在").arg(path));
        const Outcome saved = configuration.save();
        if (!saved)
            return saved;
    }
    const Result<IniFile> ini = IniFile::read(path);
    if (!ini)
        return ini.outcome;
    for (const ConfigurationKey &key : ConfigurationKey::all()) {
        const auto value = ini.value.value(latin1(key.section), latin1(key.name));
        if (value && !key.set(configuration, *value))
            return badValue(configuration, key, *value, key.accepted());
    }
    const Outcome together = checkTogether(configuration);
    if (!together)
        return together;
    if (!isEmbedded(configuration.database))
        configuration.database.path.clear(); // nobody takes the default for a file that is used
    noteOddities(configuration, ini.value);
    return configuration;
}

QString Configuration::defaultPath()
{
    const QString named = qEnvironmentVariable("KODMS_CONFIG");
    return named.isEmpty() ? userPath() : named;
}

QString Configuration::userPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/kodms/kodms.ini");
}

Outcome Configuration::save() const
{
    if (!QDir().mkpath(QFileInfo(filePath).absolutePath()))
        return Outcome::failure(tr("无法创建文件夹 %1").arg(QFileInfo(filePath).absolutePath()));
    QSaveFile file(filePath);
    const QByteArray text = asIni(*this);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
        return Outcome::failure(tr("无法写入配置文件 %1：%2").arg(filePath, file.errorString()));
    return Outcome::success();
}

} // namespace KODMS::Services
