// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/InstallationSetup.h"

namespace KODMS::Services {

/// The demo accounts of a sample installation and the file that names them: a
/// heading and one line an account: login name, password, real name, roles
/// ("-" for none), separated by tabs.
class SampleAccountsFile {
public:
    static QString pathIn(const QString &folder);

    /// One account for each role and an ordinary user, with passwords at random.
    static QVector<SampleAccount> makeAccounts();

    /// Only the owner can read the file from its first byte on. Fails, and leaves it as it is,
    /// when there is one.
    static Outcome write(const QString &path, const QVector<SampleAccount> &accounts);
    static Result<QVector<SampleAccount>> read(const QString &path);
};

} // namespace KODMS::Services
