// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Database.h"
#include "tests/records/support/RandomRecords.h"

#include <QRandomGenerator>

namespace KODMS::Tests {

/// Changes records in every way in which a row of the views can change: new, gone,
/// renamed, assigned, dated back, with short texts and long ones. Same seed, same
/// changes, as long as nobody else changes the database.
class RandomChanges {
public:
    RandomChanges(Services::Database &database, quint32 seed);

    /// One transaction with up to three changes.
    void step();

private:
    void one();
    void addFlow();
    void removeOrigFile();
    void removeFlow();
    void changeFlow();
    void changeJob();
    void changeOrigFile();
    void changePeople();
    void assign();
    void dateBack();
    void disturbLog();

    int largest(const char *table);
    int someId(const char *table);
    QString text();
    void run(const QString &sql, const QVector<QVariant> &values);

    Services::Database &m_database;
    QRandomGenerator m_random;
    RandomRecords m_records;
};

} // namespace KODMS::Tests
