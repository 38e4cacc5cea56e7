// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace KODMS::Services {

/// An account of a sample installation, as its accounts file names it.
struct SampleAccount {
    QString loginName;
    QString password; ///< made at random when the sample installation was
    QString realName;
    QStringList roles; ///< empty: an ordinary user
};

/// Makes installations. Asks nothing; nothing is running meanwhile, and nothing
/// runs afterwards: ServiceRuntime::start() follows.
class KODMS_SERVICES_API InstallationSetup {
public:
    /// What init() would find wrong with anything but the password: to be asked before
    /// somebody thinks one up.
    static Outcome check(const QString &iniPath, const QString &adminLogin,
                         const QString &adminRealName);

    /// Makes the installation that `iniPath` describes (empty: the default): the
    /// configuration when there is none, database, file store, the first
    /// administrator. Refuses to run over an existing installation. A failure
    /// leaves nothing half made.
    static Outcome init(const QString &iniPath, const QString &adminLogin,
                        const QString &adminRealName, const QString &password);

    /// Makes a sample installation with one account for each role and one
    /// ordinary user in `folder`, which must be missing, empty, or hold nothing but
    /// a configuration that says where the records shall be. The accounts, with
    /// passwords made at random, are written to a file there that only its owner
    /// can read.
    static Outcome createSample(const QString &folder);

    /// The accounts of the sample installation in `folder`.
    static Result<QVector<SampleAccount>> sampleAccounts(const QString &folder);

    /// The configuration file of the sample installation in `folder`.
    static QString sampleConfigPath(const QString &folder);
};

} // namespace KODMS::Services
