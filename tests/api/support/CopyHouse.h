// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/InstallationCopy.h"
#include "services/config/Configuration.h"
#include "tests/api/support/Installation.h"
#include "tests/support/TestDatabase.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace KODMS::Tests {

/// An installation with some work in it on the embedded engine, and a place to which it
/// is copied.
class CopyHouse {
public:
    /// Empty: it is there.
    QString make();

    /// Another place on the engine in force, with a configuration file and nothing else.
    void renewTarget();

    QString source() const { return m_home.path("source/kodms.ini"); }

    QString target() const { return place("target"); }

    QString place(const char *name) const
    {
        return m_work->filePath(QString::fromLatin1(name) + QStringLiteral("/kodms.ini"));
    }

    /// The source's dump at the beginning.
    const QStringList &before() const { return m_before; }

    /// Every row of every table that belongs to the installation, and the counters.
    static QStringList dump(const QString &ini);
    static QStringList filesOf(const QString &ini);
    static Services::DatabaseSettings databaseOf(const QString &ini);

    /// The source's stored files, where they lie.
    QStringList bodies() const { return bodies(source()); }

    static QStringList bodies(const QString &ini);

    Services::Result<Services::CopySummary> copy() const;
    /// What a start on the target says.
    QString startOfTarget() const;

private:
    Installation m_home;
    std::unique_ptr<QTemporaryDir> m_work;
    std::unique_ptr<TestDatabase> m_server; ///< the target's, when it is no file
    QStringList m_before;
};

} // namespace KODMS::Tests
