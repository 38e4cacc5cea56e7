// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Database.h"

#include <QRandomGenerator>
#include <QString>
#include <QVariant>

namespace KODMS::Tests {

/// Fills an empty database with records whose texts are as awkward as texts get:
/// both alphabets, emoji, wildcards, quotes, nothing at all; on request, a few of them very long.
/// Same seed, same data.
class RandomRecords {
public:
    explicit RandomRecords(quint32 seed, int mostPieces = 0)
        : m_random(seed), m_mostPieces(mostPieces)
    {
    }

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
    /// For what people write at length: one in forty has up to so many pieces.
    QString writing();
    QVariant someone();
    QString time();

    QRandomGenerator m_random;
    int m_mostPieces; ///< 0: no long texts
};

/// Runs one insert: column names and values side by side.
void insertRow(Services::Database &database, const char *table,
               const QVector<QPair<QString, QVariant>> &values);

} // namespace KODMS::Tests
