// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Database.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace KODMS::Tests {

/// An installed, empty database in a folder of its own, gone with the object.
class TempDatabase {
public:
    TempDatabase();

    Services::Database &operator*() { return *m_database; }

    Services::Database *operator->() { return m_database.get(); }

    /// Hands the connection over, for example to a RecordContext.
    std::unique_ptr<Services::Database> take() { return std::move(m_database); }

    /// Settings for a second connection to the same database.
    const Services::DatabaseSettings &settings() const { return m_settings; }

    QString folder() const { return m_dir.path(); }

    /// Settings for a database file of any name.
    static Services::DatabaseSettings settingsFor(const QString &path);

private:
    QTemporaryDir m_dir;
    Services::DatabaseSettings m_settings;
    std::unique_ptr<Services::Database> m_database;
};

} // namespace KODMS::Tests
