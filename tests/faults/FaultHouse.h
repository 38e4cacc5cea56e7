// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/Intake.h"
#include "services/api/StoreCheck.h"
#include "services/records/RoleSet.h"
#include "tests/common/support/TestInstallation.h"

#include <QTemporaryDir>

#include <functional>

namespace KODMS::Tests {

/// An installation with one job taken in, on a database and a file store that a fault
/// plan stands before. It can be put back to where it was as often as is wished.
class FaultHouse {
public:
    /// `prepare` is called with running services, as administrator.
    explicit FaultHouse(const std::function<void(FaultHouse &)> &prepare);
    ~FaultHouse();
    FaultHouse(const FaultHouse &) = delete;
    FaultHouse &operator=(const FaultHouse &) = delete;

    /// Everything as it was after the preparation; the services do not run then.
    void putBack();
    /// Starts the services; whoever worked last works on.
    void open();
    void close();

    /// Who works from now on; made when there is nobody of that name.
    void actAs(const QString &login, const Services::RoleSet &roles);

    const Services::IntakeReceipt &job() const { return m_job; }

    /// Changes records past the services.
    void run(const QString &statement);
    /// The rows of a query as text.
    QString rows(const QString &statement) const;

    /// Every row of every table that tells how things stand, without what differs from
    /// one time to the next: GUIDs, times, version numbers.
    QString records() const;
    /// What the audit says was done, in order.
    QStringList deeds() const;

    Services::CheckReport check(bool repairs);
    /// Files in the staging folder, and hidden ones in the download folder.
    QStringList temporaryFiles() const;

    /// A file of somebody who works here, outside of the installation: one that is there
    /// already stays as it is, since archives are not the same from one second to the next.
    QString ownFile(const QString &name, const QByteArray &bytes) const;
    QString ownFolder(const QString &name) const;

private:
    void takeIn();

    TestInstallation m_home;
    QTemporaryDir m_copy;
    TestDatabase m_keptRecords;
    QTemporaryDir m_own;
    Services::IntakeReceipt m_job;
    Services::Actor m_actor;
};

} // namespace KODMS::Tests
