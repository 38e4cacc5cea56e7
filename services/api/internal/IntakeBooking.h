// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/Intake.h"
#include "services/records/Actor.h"

namespace KODMS::Services {

class Database;
class IntakeFile;

/// The records of what was taken in. Throws SqlError; what is wrong with the
/// request or the actor throws ChangeStopped.
class IntakeBooking {
public:
    explicit IntakeBooking(Database &database, const Actor &actor);

    /// The actor has the right to take in files, as the database knows them now.
    void requireRight();
    /// The request's texts can be stored, and there is a number left for the job.
    void requireGood(const IntakeRequest &request);
    /// Writes everything, in the caller's transaction.
    IntakeReceipt book(const IntakeRequest &request, const IntakeFile &file);

private:
    struct Numbered;

    Numbered numberedJob(const IntakeRequest &request);
    int customerId(const IntakeRequest &request, QString &code);
    int insertFile(const Numbered &job, const IntakeFile &file);
    int insertFlow(const Numbered &job, const IntakeFile &file, int fileId, const QString &guid);
    void insertRow(const Numbered &job, const IntakeRequest &request, const IntakeFile &file,
                   int fileId, int flowId);
    void insertOrder(const IntakeRequest &request, const IntakeFile &file, int flowId);

    Database &m_database;
    Actor m_actor;
    QString m_now;
};

} // namespace KODMS::Services
