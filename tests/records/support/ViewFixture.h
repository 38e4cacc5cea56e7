// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/DB_Search.h"
#include "foundation/model/Odbpp_Flow_View.h"
#include "foundation/model/Odbpp_OrigFile_View.h"
#include "services/records/RecordContext.h"
#include "tests/records/support/TempDatabase.h"

#include <QStringList>

#include <vector>

namespace KODMS::Tests {

using List = std::vector<DataLib::Model::DB_Search>;

/// One condition.
DataLib::Model::DB_Search condition(const char *field, const std::string &value, bool fuzzy);

/// A small installation as the current context, with an administrator acting, and
/// searches in one line.
class ViewFixture {
public:
    ViewFixture();

    Services::RecordContext &context() { return *m_context; }

    Services::Database &database() { return m_context->database(); }

    void actAs(int userId, const Services::RoleSet &roles);

    /// A user; id as given.
    void addUser(int id, const QString &realName);
    /// A job with flow, original file and original-file row, all with this id,
    /// created by user 1 in this order.
    void addFlow(int id, const QString &jobName, const QString &origName = QStringLiteral("board"));
    void set(const char *table, int id, const char *column, const QVariant &value);
    void assign(const char *table, int flowId, int userId);

    /// Empty `countConditions`: the same list. Job names or original names in order.
    bool searchFlows(List conditions, List countConditions = {});
    bool searchOrigFiles(List conditions, List countConditions = {});

    std::vector<DataLib::Model::Odbpp_Flow_View> flows;
    std::vector<DataLib::Model::Odbpp_OrigFile_View> origFiles;
    int total = -1;

    /// Ids of the rows found last.
    QVector<int> flowIds() const;
    QVector<int> origFileIds() const;

private:
    TempDatabase m_temp;
    std::unique_ptr<Services::RecordContext> m_context;
};

} // namespace KODMS::Tests
