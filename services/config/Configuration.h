// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>
#include <QStringList>

namespace KODMS::Services {

/// [database]: where the records are.
struct DatabaseSettings {
    QString driver; ///< "sqlite" (embedded) or "postgres"
    QString path;   ///< the embedded database's file; empty for any other
    QString host;
    int port = 5432;
    QString name;
    QString user;
    QString passwordFile;       ///< the password stands in a file of its own, never here
    QString sslMode;            ///< how the server is spoken to; empty: as the client sees fit
    QString sslRootCertificate; ///< a file of those who vouch for the server; empty: the client's
    int statementTimeoutMs = 30000;
    int busyTimeoutMs = 2000;
    /// So long a writer may say nothing in the middle of a transaction before a server ends
    /// it and lets the others write; 0: as long as it likes. Not in the file.
    int silenceTimeoutMs = 300000;

    /// The same place for work that takes as long as it takes: no statement and no pause
    /// ends it, whatever the file and the server say.
    DatabaseSettings patient() const;
};

/// [fileStore]: where the customers' files are.
struct FileStoreSettings {
    QString kind;         ///< "folder" or "gridfs"
    QString root;         ///< the folder store's root folder
    QString uri;          ///< the GridFS server
    QString passwordFile; ///< its password, when it shall not stand in the uri
    QString database;
    QString bucket;
};

/// [paths]: handed to the desks as they stand; the desks join them plainly, so
/// both should end in a path separator.
struct PathSettings {
    QString staging;
    QString download;
};

/// [robot]: where the CAM robot listens. An empty host means that there is none.
struct RobotSettings {
    QString host;
    int port = 7071;
};

/// [limits]: what unpacking an archive may cost.
struct LimitSettings {
    qint64 archiveEntries = 200000;
    qint64 archiveBytes = Q_INT64_C(34359738368);
    qint64 archiveRatio = 200;
};

/// One installation's configuration, from an INI file. Value type.
struct Configuration {
    DatabaseSettings database;
    FileStoreSettings fileStore;
    PathSettings paths;
    RobotSettings robot;
    LimitSettings limits;
    bool isSample = false; ///< [installation] sample: a set-up to try things in
    QString filePath;      ///< the INI file, absolute
    QStringList notices;   ///< what load() found odd but usable, translated

    /// Embedded defaults, everything under `dataFolder`.
    static Configuration defaults(const QString &iniPath, const QString &dataFolder);

    /// Defaults for a new installation at `iniPath`: the user's data folder for
    /// the user's own configuration file, else the INI file's folder, so that two
    /// installations never share a database by accident.
    static Configuration defaultsFor(const QString &iniPath);

    /// Reads and checks `iniPath` (empty: defaultPath()). The user's own
    /// configuration file is created with the defaults when it is missing; any
    /// other missing file is a failure. The text names file, section, key, value
    /// and what is accepted.
    static Result<Configuration> load(const QString &iniPath);

    /// $KODMS_CONFIG, else userPath().
    static QString defaultPath();

    /// The configuration file in the user's configuration folder.
    static QString userPath();

    /// Writes filePath, whole or not at all; creates its folder. Places that are the defaults
    /// beside the file are left out, so that they follow it when the folder is moved.
    Outcome save() const;
};

} // namespace KODMS::Services
