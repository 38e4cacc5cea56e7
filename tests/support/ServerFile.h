// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"

#include <QFile>
#include <QMap>
#include <QString>

namespace KODMS::Tests {

/// What tests/postgres/server wrote of a server that it started, or why there is none. Of use
/// to benchmarks, too: nothing but this header is needed.
class ServerFile {
public:
    explicit ServerFile(const QString &path)
    {
        QFile file(path);
        m_isRead = file.open(QIODevice::ReadOnly);
        const QStringList lines =
            QString::fromUtf8(m_isRead ? file.readAll() : QByteArray()).split(QLatin1Char('\n'));
        for (const QString &line : lines)
            m_values.insert(line.section(QLatin1Char('='), 0, 0),
                            line.section(QLatin1Char('='), 1));
    }

    /// False when there is no such file.
    bool isRead() const { return m_isRead; }

    /// False when the file says why there is no server.
    bool isServer() const { return m_isRead && !m_values.contains(QStringLiteral("reason")); }

    QString reason() const { return m_values.value(QStringLiteral("reason")); }

    qint64 pid() const { return m_values.value(QStringLiteral("pid")).toLongLong(); }

    /// Of a database there.
    Services::DatabaseSettings settings(const QString &database) const
    {
        Services::DatabaseSettings settings;
        settings.driver = QStringLiteral("postgres");
        settings.host = m_values.value(QStringLiteral("host"));
        settings.port = m_values.value(QStringLiteral("port")).toInt();
        settings.user = m_values.value(QStringLiteral("user"));
        settings.passwordFile = m_values.value(QStringLiteral("passwordFile"));
        settings.name = database;
        return settings;
    }

private:
    bool m_isRead = false;
    QMap<QString, QString> m_values;
};

} // namespace KODMS::Tests
