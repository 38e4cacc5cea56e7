// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/RecoveryPoint.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/Dialect.h"

namespace KODMS::Services {

RecoveryPoint::RecoveryPoint(Database &database)
    : m_database(database),
      m_isSet(database.m_transactionDepth > 0 && database.dialect().errorEndsTransaction())
{
    if (m_isSet)
        m_database.runOnce(QStringLiteral("SAVEPOINT kodms_recovery"));
}

RecoveryPoint::~RecoveryPoint()
{
    if (!m_isSet)
        return;
    try {
        if (m_database.m_isBroken) {
            m_database.runOnce(QStringLiteral("ROLLBACK TO SAVEPOINT kodms_recovery"));
            m_database.transactionGoesOn();
        }
        m_database.runOnce(QStringLiteral("RELEASE SAVEPOINT kodms_recovery"));
    } catch (const SqlError &error) { // the transaction stays broken, and says so at its end
        qCDebug(lcRecords).noquote() << "recovery:" << error.what();
    }
}

} // namespace KODMS::Services
