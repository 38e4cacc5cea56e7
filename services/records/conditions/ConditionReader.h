// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/DB_Search.h"
#include "services/records/conditions/SearchRequest.h"
#include "services/records/conditions/SearchView.h"

#include <QString>

#include <vector>

namespace KODMS::Services {

/// Understands a condition list. Record by record: join, opening bracket, field,
/// match, closing bracket; AND binds tighter than OR.
class ConditionReader {
public:
    explicit ConditionReader(const SearchView &view);

    /// False when the list cannot be understood; problem() says why, in English.
    bool read(const std::vector<DataLib::Model::DB_Search> &list);

    const SearchRequest &request() const { return m_request; }

    const QString &problem() const { return m_problem; }

private:
    using Record = DataLib::Model::DB_Search;

    /// A bracket that is still open: groups of AND, joined by OR.
    struct Group {
        std::vector<std::vector<Condition>> alternatives;
        bool orBefore = false; ///< how the bracket is joined to what stands before it
    };

    bool readOrder(const Record &record);
    bool readPage(const Record &record);
    bool readCondition(const Record &record);
    bool readField(const Record &record, Condition *condition);
    bool close();
    bool fail(const QString &problem);

    static bool repeats(const Record &record, const Record &before);
    static void add(Group &group, bool orBefore, Condition condition);
    static Condition fold(Group &group);

    const SearchView &m_view;
    SearchRequest m_request;
    QString m_problem;
    std::vector<Group> m_open;
};

} // namespace KODMS::Services
