// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"

#include <QVector>

#include <variant>

namespace KODMS::Services {

/// One key of the configuration file: where it goes and what it accepts. Reading
/// and writing use the same table, so that what is written can be read.
struct ConfigurationKey {
    enum class Kind { Text, RequiredText, Choice, Number, Flag, Address, RelativePath };

    using Field = std::variant<QString *, int *, qint64 *, bool *>;

    const char *section;
    const char *name;
    Kind kind;
    Field (*field)(Configuration &);
    QStringList choices{}; ///< Choice
    qint64 least = 0;      ///< Number
    qint64 most = 0;       ///< Number

    static const QVector<ConfigurationKey> &all();

    /// Stores `text`; false when it is not acceptable, and nothing is stored.
    bool set(Configuration &configuration, const QString &text) const;

    QString get(const Configuration &configuration) const;

    /// What is accepted, translated.
    QString accepted() const;
};

} // namespace KODMS::Services
