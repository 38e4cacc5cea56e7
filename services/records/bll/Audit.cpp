// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/Audit.h"

#include "services/records/Database.h"
#include "services/records/TimeText.h"
#include "services/records/Transaction.h"

namespace KODMS::Services {

namespace {

constexpr int LongestValue = 20000;

/// A text for a NOT NULL column: a null QString would be bound as NULL.
QString plain(const QString &text)
{
    return text.isNull() ? QStringLiteral("") : text.left(LongestValue);
}

void insertEvent(Database &database, const AuditEvent &event)
{
    SqlQuery query = database.query("insert_event");
    query.bind(":time", storedNow());
    query.bindId(":user", event.userId);
    query.bind(":action", plain(event.action));
    query.bind(":kind", plain(event.recordKind));
    query.bindId(":record", event.recordId);
    query.bind(":name", plain(event.recordName));
    query.bind(":before", plain(event.before));
    query.bind(":after", plain(event.after));
    query.bind(":refused", event.refused ? 1 : 0);
    query.exec();
}

} // namespace

/// A transaction even for one row: the numbers of the events grow in the order in which
/// they can be read.
void writeAudit(Database &database, const AuditEvent &event)
{
    if (database.isInTransaction()) {
        insertEvent(database, event);
        return;
    }
    Transaction transaction(database);
    insertEvent(database, event);
    transaction.commit();
}

} // namespace KODMS::Services
