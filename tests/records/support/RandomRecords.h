// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Database.h"

#include <QRandomGenerator>
#include <QString>
#include <QVariant>

namespace KODMS::Tests {

/// Fills an empty database with records whose texts are as awkward as texts get:
/// both alphabets, emoji, wildcards, quotes, nothing at all. Same seed, same data.
class RandomRecords {
public:
    explicit RandomRecords(quint32 seed) : m_random(seed) {}

    void fill(Services::Database &database, int flows);

    /// One more flow with all that belongs to it; `id` is a new one.
    void addFlow(Services::Database &database, int id);

    static constexpr int users = 12;
    static constexpr int customers = 15;

    /// A text of up to six pieces.
    static QString awkwardText(QRandomGenerator &random);

private:
    void fillUsers(Services::Database &database);
    void fillCustomers(Services::Database &database);
    void fillFlow(Services::Database &database, int id);
    void fillAssignments(Services::Database &database, int id);
    QVariant someone();
    QString time();

    QRandomGenerator m_random;
};

/// Runs one insert: column names and values side by side.
void insertRow(Services::Database &database, const char *table,
               const QVector<QPair<QString, QVariant>> &values);

} // namespace KODMS::Tests
