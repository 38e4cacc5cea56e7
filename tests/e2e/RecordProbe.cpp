// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/RecordProbe.h"

namespace KODMS::Tests {

QString RecordProbe::text(const QString &statement) const
{
    return texts(statement).value(0);
}

int RecordProbe::number(const QString &statement) const
{
    return text(statement).toInt();
}

QStringList RecordProbe::flows(const QString &where) const
{
    QString statement =
        QStringLiteral("SELECT f.job_name FROM job_flows f JOIN jobs j ON j.name = f.job_name "
                       "LEFT JOIN orig_file_assign o ON o.flow_id = f.id "
                       "LEFT JOIN pre_check_assign p ON p.flow_id = f.id");
    if (!where.isEmpty())
        statement += QStringLiteral(" WHERE ") + where;
    return texts(statement + QStringLiteral(" ORDER BY f.create_time DESC, f.id DESC"));
}

} // namespace KODMS::Tests
