// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/ShownRecords.h"

#include "services/records/SqlQuery.h"

namespace KODMS::Services {

RowVersions versionsOf(const SqlQuery &query)
{
    return {query.number("state_version"), query.number("file_version"),
            query.number("assignment_version"), query.number("remark_version")};
}

} // namespace KODMS::Services
