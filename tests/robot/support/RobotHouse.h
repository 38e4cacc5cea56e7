// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/Intake.h"
#include "services/records/bll/FlowRecords.h"
#include "tests/common/support/TestInstallation.h"

namespace KODMS::Tests {

/// An installation with a robot's account and jobs that wait for it. A failure ends the process.
class RobotHouse {
public:
    static constexpr const char *Login = "robot";

    RobotHouse();

    TestInstallation &installation() { return m_installation; }

    /// Adds an account; every account has the same password, in passwordFile().
    void addAccount(const QString &login, const QStringList &roles);

    QString passwordFile() const { return m_installation.path(QStringLiteral("password")); }

    /// A job of the CAM product's own archive, which waits for the robot at (1,2).
    Services::IntakeReceipt addJob(const QString &customerCode = QStringLiteral("A1B"),
                                   bool paid = false);
    void setState(const QString &jobName, Services::FlowState state);
    Services::FlowRow flow(const QString &jobName);

    bool hasResult(const QString &jobName) { return flow(jobName).resultFileId != 0; }

    /// The reviewer's verdict on the robot's result, as a desk gives it; (2, `flag`).
    bool review(const QString &jobName, int flag);

    /// The files of the delivered result, by path.
    QMap<QString, QByteArray> resultOf(const QString &jobName);

    /// True when records and files agree.
    bool agrees();
    /// The same, and nothing waits to be stored.
    bool isClean();
    /// What `kodms-admin check --repair` does after a crash.
    void repair();

private:
    TestInstallation m_installation;
    QString m_kos;
};

} // namespace KODMS::Tests
