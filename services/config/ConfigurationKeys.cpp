// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/config/ConfigurationKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHostAddress>

#include <limits>

namespace KODMS::Services {

namespace {

using Kind = ConfigurationKey::Kind;
using Field = ConfigurationKey::Field;

QString tr(const char *text)
{
    return QCoreApplication::translate("Configuration", text);
}

const QString True = QStringLiteral("true");
const QString False = QStringLiteral("false");

/// A relative path of our own files means: beside the configuration file, so that
/// an installation's folder can be moved. The working directory never matters.
QString besideFile(const Configuration &configuration, const QString &path)
{
    if (path.isEmpty() || QDir::isAbsolutePath(path))
        return path;
    return QDir::cleanPath(QFileInfo(configuration.filePath).absoluteDir().filePath(path));
}

bool setNumber(const ConfigurationKey &key, const Field &field, const QString &text)
{
    bool ok = false;
    const qint64 number = text.toLongLong(&ok);
    if (!ok || number < key.least || number > key.most)
        return false;
    if (auto *const *target = std::get_if<int *>(&field))
        **target = static_cast<int>(number);
    else
        *std::get<qint64 *>(field) = number;
    return true;
}

bool setText(const ConfigurationKey &key, Configuration &configuration, const QString &text)
{
    if (key.kind == Kind::RequiredText && text.isEmpty())
        return false;
    if (key.kind == Kind::Choice && !key.choices.contains(text))
        return false;
    if (key.kind == Kind::Address && !text.isEmpty() && QHostAddress(text).isNull())
        return false;
    QString *target = std::get<QString *>(key.field(configuration));
    *target = key.kind == Kind::RelativePath ? besideFile(configuration, text) : text;
    return true;
}

constexpr qint64 LargestPort = 65535;
constexpr qint64 LargestTimeout = 600000;
constexpr qint64 LargestLimit = std::numeric_limits<qint64>::max();

// clang-format off
QVector<ConfigurationKey> databaseKeys()
{
    return {
        {"database", "driver", Kind::Choice, [](Configuration &c) -> Field { return &c.database.driver; },
         {QStringLiteral("sqlite"), QStringLiteral("postgres")}},
        {"database", "path", Kind::RelativePath, [](Configuration &c) -> Field { return &c.database.path; }},
        {"database", "host", Kind::Text, [](Configuration &c) -> Field { return &c.database.host; }},
        {"database", "port", Kind::Number, [](Configuration &c) -> Field { return &c.database.port; }, {}, 1, LargestPort},
        {"database", "name", Kind::Text, [](Configuration &c) -> Field { return &c.database.name; }},
        {"database", "user", Kind::Text, [](Configuration &c) -> Field { return &c.database.user; }},
        {"database", "passwordFile", Kind::RelativePath, [](Configuration &c) -> Field { return &c.database.passwordFile; }},
        {"database", "sslMode", Kind::Choice, [](Configuration &c) -> Field { return &c.database.sslMode; },
         {QStringLiteral("disable"), QStringLiteral("prefer"), QStringLiteral("require"), QStringLiteral("verify-ca"), QStringLiteral("verify-full")}},
        {"database", "sslRootCertificate", Kind::RelativePath, [](Configuration &c) -> Field { return &c.database.sslRootCertificate; }},
        {"database", "statementTimeoutMs", Kind::Number, [](Configuration &c) -> Field { return &c.database.statementTimeoutMs; }, {}, 100, LargestTimeout},
        {"database", "busyTimeoutMs", Kind::Number, [](Configuration &c) -> Field { return &c.database.busyTimeoutMs; }, {}, 0, LargestTimeout},
    };
}

QVector<ConfigurationKey> otherKeys()
{
    return {
        {"fileStore", "kind", Kind::Choice, [](Configuration &c) -> Field { return &c.fileStore.kind; },
         {QStringLiteral("folder"), QStringLiteral("gridfs")}},
        {"fileStore", "root", Kind::RelativePath, [](Configuration &c) -> Field { return &c.fileStore.root; }},
        {"fileStore", "uri", Kind::Text, [](Configuration &c) -> Field { return &c.fileStore.uri; }},
        {"fileStore", "passwordFile", Kind::RelativePath, [](Configuration &c) -> Field { return &c.fileStore.passwordFile; }},
        {"fileStore", "database", Kind::RequiredText, [](Configuration &c) -> Field { return &c.fileStore.database; }},
        {"fileStore", "bucket", Kind::RequiredText, [](Configuration &c) -> Field { return &c.fileStore.bucket; }},
        {"paths", "staging", Kind::RequiredText, [](Configuration &c) -> Field { return &c.paths.staging; }},
        {"paths", "download", Kind::RequiredText, [](Configuration &c) -> Field { return &c.paths.download; }},
        {"robot", "host", Kind::Address, [](Configuration &c) -> Field { return &c.robot.host; }},
        {"robot", "port", Kind::Number, [](Configuration &c) -> Field { return &c.robot.port; }, {}, 1, LargestPort},
        {"limits", "archiveEntries", Kind::Number, [](Configuration &c) -> Field { return &c.limits.archiveEntries; }, {}, 1, LargestLimit},
        {"limits", "archiveBytes", Kind::Number, [](Configuration &c) -> Field { return &c.limits.archiveBytes; }, {}, 1, LargestLimit},
        {"limits", "archiveRatio", Kind::Number, [](Configuration &c) -> Field { return &c.limits.archiveRatio; }, {}, 1, LargestLimit},
        {"installation", "sample", Kind::Flag, [](Configuration &c) -> Field { return &c.isSample; }},
    };
}

// clang-format on

} // namespace

const QVector<ConfigurationKey> &ConfigurationKey::all()
{
    static const QVector<ConfigurationKey> keys = databaseKeys() + otherKeys();
    return keys;
}

bool ConfigurationKey::set(Configuration &configuration, const QString &text) const
{
    switch (kind) {
    case Kind::Number:
        return setNumber(*this, field(configuration), text);
    case Kind::Flag:
        if (text != True && text != False)
            return false;
        *std::get<bool *>(field(configuration)) = text == True;
        return true;
    default:
        return setText(*this, configuration, text);
    }
}

QString ConfigurationKey::get(const Configuration &configuration) const
{
    Configuration copy = configuration;
    const Field value = field(copy);
    if (auto *const *text = std::get_if<QString *>(&value))
        return **text;
    if (auto *const *number = std::get_if<int *>(&value))
        return QString::number(**number);
    if (auto *const *number = std::get_if<qint64 *>(&value))
        return QString::number(**number);
    return *std::get<bool *>(value) ? True : False;
}

QString ConfigurationKey::accepted() const
{
    switch (kind) {
    case Kind::Choice:
        return choices.join(QStringLiteral(" | "));
    case Kind::Number:
        return tr("%1 到 %2 之间的整数").arg(least).arg(most);
    case Kind::Flag:
        return True + QStringLiteral(" | ") + False;
    case Kind::Address:
        return tr("数字形式的 IP 地址，或留空");
    case Kind::RequiredText:
        return tr("非空文本");
    default:
        return tr("任意文本");
    }
}

} // namespace KODMS::Services
