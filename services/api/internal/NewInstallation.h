// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/records/bll/UserRecords.h"

#include <vector>

namespace KODMS::Services {

class SqlError;

/// Makes one installation; takes back what it made itself when a step fails. Of several
/// that are made at the same place at once, one succeeds and the others leave it alone.
class NewInstallation {
public:
    explicit NewInstallation(Configuration configuration);
    ~NewInstallation();
    NewInstallation(const NewInstallation &) = delete;
    NewInstallation &operator=(const NewInstallation &) = delete;

    /// The configuration file is written when there is none yet.
    Outcome make(const std::vector<UserRow> &users);
    /// Fails when there is an installation already.
    Outcome refuseExisting() const;

private:
    bool isInstalledOnServer() const;
    Outcome existing() const;
    Outcome makeFolders() const;
    Outcome makeStore() const;
    Outcome claimDatabase();
    Outcome makeRecords(const std::vector<UserRow> &users);
    Outcome notMade(const SqlError &error) const;
    void removeDatabase() const;

    Configuration m_configuration;
    bool m_madeDatabase = false;
    bool m_isWhole = false;
};

} // namespace KODMS::Services
