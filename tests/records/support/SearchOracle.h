// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/DB_Search.h"
#include "services/records/Actor.h"
#include "services/records/Database.h"

#include <QHash>
#include <QVariant>
#include <QVector>

#include <vector>

namespace KODMS::Tests {

/// Answers condition lists by looking at every row in memory, reading the list
/// from left to right for each. Knows nothing of SQL, and shares no code with the
/// services: what both agree on is right.
class SearchOracle {
public:
    using Record = DataLib::Model::DB_Search;
    using List = std::vector<Record>;
    using Row = QHash<QString, QVariant>;

    enum class View { Flow, OrigFile };

    SearchOracle(View view, Services::Database &database);

    struct Answer {
        QVector<int> ids;
        int count = 0;
    };

    /// Both lists are well formed.
    Answer ask(const List &conditions, const List &countConditions,
               const Services::Actor &actor) const;

    const QVector<Row> &rows() const { return m_rows; }

    const QStringList &fields() const { return m_fields; }

private:
    class Reading;

    static List withoutRepetition(const List &list);
    QVector<int> matching(const List &list, const Services::Actor &actor) const;
    bool isInScope(const Row &row, const Services::Actor &actor) const;
    void sort(QVector<int> &places, const List &list) const;
    int idOf(const Row &row) const;

    View m_view;
    QVector<Row> m_rows;
    QStringList m_fields;
};

} // namespace KODMS::Tests
