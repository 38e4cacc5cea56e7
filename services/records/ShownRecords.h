// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Services {

/// How often each group of fields of a flow was changed. Both desks' rows belong
/// to one flow, and the flow carries the numbers.
struct RowVersions {
    int state = 0;
    int file = 0;
    int assignment = 0;
    int remark = 0;
};

class SqlQuery;

/// The versions in the query's present row, from the columns of those names.
RowVersions versionsOf(const SqlQuery &query);

/// A row that a view service has just shown to this session.
struct ShownRow {
    enum class View { Flow, OrigFile };

    View view = View::Flow;
    int rowId = 0;  ///< id of the row in its view
    int flowId = 0; ///< the flow it belongs to
    QString flowGuid;
    RowVersions versions;
    QString jobName = {};
};

/// Remembers what was shown, so that a write on something that somebody else has
/// changed since can be refused.
class ShownRecords {
public:
    virtual ~ShownRecords() = default;

    virtual void shown(const ShownRow &row) = 0;
};

} // namespace KODMS::Services
