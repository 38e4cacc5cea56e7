// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace KODMS::Host {

/// What the host remembers from one run to the next, in one INI file beside the
/// configuration. A file that cannot be read or written costs the memory, never
/// the start: every value has a default.
class Preferences {
public:
    explicit Preferences(QString filePath);

    /// The file for the installation whose configuration is `configPath`.
    static QString fileBeside(const QString &configPath);

    QString language() const;
    void setLanguage(const QString &language);

    QString lastLogin() const;
    void setLastLogin(const QString &login);

    bool highContrastStatus(int userId) const;
    void setHighContrastStatus(int userId, bool on);

    /// Whether the desks follow the changes of others by themselves; no unless asked for.
    bool automaticRefresh(int userId) const;
    void setAutomaticRefresh(int userId, bool on);

    QByteArray windowGeometry(int userId) const;
    void setWindowGeometry(int userId, const QByteArray &geometry);

    /// Which panels are open, where, and how large, as the main window writes it.
    QByteArray panels(int userId) const;
    void setPanels(int userId, const QByteArray &state);

    /// Widths and order of one table's columns, as ColumnMemory writes them.
    QByteArray columns(int userId, const QString &table) const;
    void setColumns(int userId, const QString &table, const QByteArray &text);

private:
    QString m_filePath;
};

} // namespace KODMS::Host
