// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace KODMS::Tests {

/// What it takes to make a database of the server once more what it was when it had just
/// been copied: the rows, as long as nobody changed the tables themselves.
class ServerCopy {
public:
    ServerCopy() = default;
    /// Of a database that has just been copied from `origin`.
    ServerCopy(QString origin, const Services::DatabaseSettings &settings, bool isOfLasting);

    QString name() const { return m_name; }

    bool isOfLasting() const { return m_isOfLasting; }

    /// False when this is no copy of `origin` or its tables are others by now.
    bool restore(const QString &origin, const Services::DatabaseSettings &settings) const;

    /// Copies that their owners need no more, for the next who wants one.
    static void keepForOthers(const ServerCopy &copy);
    static std::optional<ServerCopy> keptOf(const QString &origin);
    /// The names of those that nobody took.
    static QStringList forgetKept();

private:
    QString m_name;
    QString m_origin;
    QString m_shape;
    QString m_script;
    bool m_isOfLasting = false;
};

} // namespace KODMS::Tests
