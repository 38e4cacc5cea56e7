// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"

#include <QString>
#include <QStringList>

namespace KODMS::Services {

/// The running service library of one application: configuration, database, file
/// store. Started once the application object exists and stopped before it goes;
/// GUI thread.
class KODMS_SERVICES_API ServiceRuntime {
public:
    static ServiceRuntime &instance();

    /// Opens the installation that `iniPath` describes (empty: defaultConfigPath()).
    /// The text of a failure is for people and says what to do. A second start
    /// without stop() fails.
    Outcome start(const QString &iniPath = QString());

    /// Signs out, closes everything. Without effect when not running; happens by
    /// itself when the application object goes.
    void stop();

    bool isRunning() const;

    /// $KODMS_CONFIG, else the file in the user's configuration folder.
    static QString defaultConfigPath();

    // What is running; empty texts and 0 when nothing is.
    QString configPath() const;
    QString databaseText() const;  ///< for the status bar, without secrets
    QString fileStoreText() const; ///< for the status bar, without secrets
    bool isSample() const;         ///< a set-up to try things in: the host shows a banner
    int schemaVersion() const;
    /// What is odd about the configuration but usable (paths without a separator
    /// at the end, unknown keys); also raised as notices by start().
    QStringList configurationNotices() const;

    ServiceRuntime(const ServiceRuntime &) = delete;
    ServiceRuntime &operator=(const ServiceRuntime &) = delete;

private:
    ServiceRuntime() = default;
};

} // namespace KODMS::Services
