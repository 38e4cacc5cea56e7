// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Tests {

/// A statement over the original files, newest first, with the columns `select`
/// of c (what the customer sent), k (customer), o (stored file), a (assignment)
/// and u (executor), of the files that meet `where` (empty: all).
inline QString fileRecords(const QString &select, const QString &where)
{
    QString statement = QStringLiteral("SELECT ") + select +
                        QStringLiteral(" FROM job_compress c "
                                       "JOIN job_flows f ON f.id = c.flow_id "
                                       "JOIN customers k ON k.id = c.customer_id "
                                       "LEFT JOIN orig_files o ON o.id = c.orig_file_id "
                                       "LEFT JOIN orig_file_assign a ON a.flow_id = c.flow_id "
                                       "LEFT JOIN users u ON u.id = a.executor_id");
    if (!where.isEmpty())
        statement += QStringLiteral(" WHERE ") + where;
    return statement + QStringLiteral(" ORDER BY f.create_time DESC, c.id DESC");
}

} // namespace KODMS::Tests
