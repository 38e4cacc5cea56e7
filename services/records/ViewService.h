// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/DB_Search.h"

#include <QString>

#include <functional>
#include <vector>

namespace KODMS::Services {

class RecordContext;
class SearchView;
class ViewSearch;

/// What both view services do: one search in one state of the database, with the
/// failure said once in log and notice.
class ViewService {
public:
    using List = std::vector<DataLib::Model::DB_Search>;
    /// Reads the rows of the ids that were found, in order; false when they are not those of
    /// the search's moment.
    using ReadRows = std::function<bool(RecordContext &, const ViewSearch &)>;

    ViewService(const char *operation, const SearchView &view)
        : m_operation(operation), m_view(view)
    {
    }

    /// False after any failure; then `totalCount` is 0, and the rows are the caller's to clear.
    bool search(const List &conditions, const List &countConditions, const ReadRows &readRows,
                int *totalCount);

private:
    bool searchByIndex(RecordContext &context, const List &conditions, const List &countConditions,
                       const ReadRows &readRows, int *totalCount) const;
    bool searchIn(RecordContext &context, const List &conditions, const List &countConditions,
                  const ReadRows &readRows, int *totalCount);
    bool fail(const QString &cause, const QString &userText) const;

    const char *m_operation;
    const SearchView &m_view;
};

} // namespace KODMS::Services
