// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Transaction.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/Dialect.h"

#include <exception>

namespace KODMS::Services {

namespace {

QString savepoint(int depth)
{
    return QStringLiteral("kodms_level_%1").arg(depth);
}

} // namespace

Transaction::Transaction(Database &database, Purpose purpose)
    : m_database(database), m_depth(database.m_transactionDepth)
{
    const bool writes = purpose == Purpose::Write;
    if (m_depth > 0) {
        if (writes && !database.m_isWriting)
            throw SqlError(SqlError::Kind::Other, {},
                           QStringLiteral("a reading transaction cannot begin to write"));
        database.run(QStringLiteral("SAVEPOINT ") + savepoint(m_depth));
    } else {
        if (database.m_isAbandoned)
            rollBack();
        database.run(writes ? database.dialect().beginWrite() : database.dialect().beginRead());
        database.m_isAbandoned = false;
        database.m_isWriting = writes;
    }
    ++database.m_transactionDepth;
    m_isOpen = true;
}

Transaction::~Transaction()
{
    if (m_isOpen)
        rollBack();
}

void Transaction::commit()
{
    m_database.run(m_depth > 0 ? QStringLiteral("RELEASE SAVEPOINT ") + savepoint(m_depth)
                               : QStringLiteral("COMMIT"));
    m_isOpen = false;
    m_database.m_transactionDepth = m_depth;
}

void Transaction::rollBack()
{
    m_isOpen = false;
    m_database.m_transactionDepth = m_depth;
    try {
        if (m_depth > 0) {
            m_database.run(QStringLiteral("ROLLBACK TO SAVEPOINT ") + savepoint(m_depth));
            m_database.run(QStringLiteral("RELEASE SAVEPOINT ") + savepoint(m_depth));
        } else {
            m_database.run(QStringLiteral("ROLLBACK"));
        }
    } catch (const std::exception &error) {
        // A full disk or a lost connection has already undone the whole change. Otherwise it
        // is still open, and the next transaction could not begin.
        m_database.m_isAbandoned = true;
        qCDebug(lcRecords).noquote() << "rollback:" << error.what();
    }
}

} // namespace KODMS::Services
