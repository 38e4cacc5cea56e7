// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/ShownSearches.h"
#include "services/config/Configuration.h"
#include "services/notices/Outcome.h"
#include "services/records/Actor.h"
#include "services/records/RecordContext.h"
#include "services/records/Transaction.h"

#include <QVector>

#include <functional>

namespace KODMS::Services {

class SqlQuery;

/// Reads all rows of a search through a connection of its own, in one state of the
/// records. Belongs to one thread, any one.
class ListSource {
public:
    /// Throws SqlError.
    ListSource(const DatabaseSettings &settings, const Actor &actor);

    /// Finds the rows. Throws SqlError.
    Outcome find(const ShownSearch &search);

    int count() const { return m_ids.size(); }

    /// Hands out the next rows, a handful, each with its place among them. Returns how
    /// many; 0 at the end. Throws SqlError.
    int readNext(const std::function<void(int, const SqlQuery &)> &take);

private:
    RecordContext m_context;
    Transaction m_oneState;
    const char *m_statement = nullptr;
    QVector<int> m_ids;
    int m_next = 0;
};

} // namespace KODMS::Services
