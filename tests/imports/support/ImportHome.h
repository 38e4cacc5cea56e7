// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/Intake.h"
#include "services/imports/ReadJob.h"
#include "tests/common/support/TestInstallation.h"

namespace KODMS::Tests {

/// An installation with a job taken in, and ODB++ jobs on the disk beside it.
class ImportHome {
public:
    explicit ImportHome(const QString &customer = QStringLiteral("A1B"));

    TestInstallation house;
    Services::IntakeReceipt job;

    /// A board of six copper layers and 550 features, as tgz or as folder.
    QString boardArchive(const QString &name = QStringLiteral("board"));
    QString boardFolder(const QString &name = QStringLiteral("board"));

    Services::ReadJob readBoard(const QString &path);

    /// Signs in as a user with these roles who is the executor of the job.
    int actAsExecutor(const Services::RoleSet &roles = {});
    void setState(int status, int flag);

    QString flowValue(const QString &column);
    /// Status, flag, original name, counts, who imported: what an import changes.
    QString summary();
    /// How many records and stored files there are.
    QString stock();
};

} // namespace KODMS::Tests
