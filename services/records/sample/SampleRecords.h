// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"
#include "services/records/sample/SampleFactory.h"

#include <functional>

namespace KODMS::Services {

class Database;

/// Writes generated flows into a database, as one transaction. When there is no
/// flow yet, indexes and triggers wait until the tables are full.
class SampleRecords {
public:
    /// Called for each generated stored file, in order; a failure ends the work.
    using TakeFile = std::function<Outcome(const SampleFile &)>;

    /// The files of the newest `flowsWithBodies` are really put into the store by
    /// `takeFile`; the records of the others say that they have no file.
    SampleRecords(Database &database, int flowsWithBodies, TakeFile takeFile);

    /// Progress counts flows. Throws SqlError.
    Outcome write(int flows, quint32 seed, Progress &progress);

private:
    SampleFactory::Plan plan(int flows, quint32 seed);
    QVector<SampleUser> people(bool accountsOnly);
    void addStaff(SampleRandom &random);
    QVector<SampleCustomer> customers(SampleRandom &random, int wanted);
    void addCustomer(SampleRandom &random, const QString &code);
    Outcome writeFlows(SampleFactory &factory, int flows, Progress &progress);
    void dropWhatCanWait();
    void makeWhatWaited();
    int largest(const char *statement);

    Database &m_database;
    int m_flowsWithBodies;
    TakeFile m_takeFile;
};

} // namespace KODMS::Services
