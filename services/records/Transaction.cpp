// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Transaction.h"

#include "services/notices/NoticeHub.h"
#include "services/notices/OneLine.h"
#include "services/records/Database.h"
#include "services/records/Dialect.h"
#include "services/records/WriteListener.h"

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
        database.runOnce(QStringLiteral("SAVEPOINT ") + savepoint(m_depth));
    } else {
        begin(writes);
    }
    ++database.m_transactionDepth;
    m_isOpen = true;
    tellBegin();
}

void Transaction::begin(bool writes)
{
    const Dialect &dialect = m_database.dialect();
    if (m_database.m_isAbandoned)
        rollBack();
    const QStringList statements = writes ? dialect.beginWrite() : QStringList(dialect.beginRead());
    m_database.run(statements.first());
    m_database.m_transactionId.clear();
    try {
        for (int i = 1; i < statements.size(); ++i) {
            const QString id =
                m_database.textOnce(statements.at(i), QStringLiteral("transaction_id"));
            if (!id.isEmpty())
                m_database.m_transactionId = id;
        }
    } catch (const SqlError &) { // it has begun, and waited in vain
        rollBack();
        throw;
    }
    m_database.m_isAbandoned = false;
    m_database.m_isWriting = writes;
    m_database.transactionGoesOn();
}

Transaction::~Transaction()
{
    if (m_isOpen)
        rollBack();
}

/// Only the outermost transaction that writes is of interest to anybody.
WriteListener *Transaction::listener() const
{
    return m_depth == 0 && m_database.m_isWriting ? m_database.m_writeListener : nullptr;
}

void Transaction::tellBegin()
{
    WriteListener *told = listener();
    if (told == nullptr)
        return;
    try {
        told->writeBegins();
    } catch (...) {
        rollBack();
        throw;
    }
}

void Transaction::commit()
{
    if (m_database.m_isBroken) // a server would undo it without a word
        throw SqlError(SqlError::Kind::Other, QStringLiteral("COMMIT"),
                       QStringLiteral("a statement of the transaction has failed"));
    WriteListener *told = listener();
    if (told != nullptr)
        told->writeEnds();
    if (m_depth > 0)
        m_database.runOnce(QStringLiteral("RELEASE SAVEPOINT ") + savepoint(m_depth));
    else
        commitOutermost();
    m_isOpen = false;
    m_database.m_transactionDepth = m_depth;
    if (told != nullptr)
        told->written();
}

void Transaction::commitOutermost()
{
    try {
        m_database.runOnce(QStringLiteral("COMMIT"));
    } catch (const SqlError &error) {
        if (error.kind() != SqlError::Kind::Lost || m_database.m_transactionId.isEmpty())
            throw;
        m_isOpen = false; // nothing is left to be undone
        m_database.m_transactionDepth = m_depth;
        if (!isSavedAllTheSame())
            throw;
    }
}

/// Whoever waits for an answer does not know whether the server has heard the question.
bool Transaction::isSavedAllTheSame()
{
    QString found;
    try {
        m_database.reopen();
        found = fate();
    } catch (const SqlError &error) {
        found = error.logText();
    }
    qCInfo(lcRecords).noquote() << "the connection was lost in COMMIT, found afterwards:"
                                << oneLine(found);
    if (found == QLatin1String("committed"))
        return true;
    if (found == QLatin1String("aborted"))
        return false;
    throw SqlError(SqlError::Kind::Unsure, QStringLiteral("COMMIT"), found);
}

/// As a writer: the server may still be at work on what it was asked over the old connection,
/// and has ended that when the next writer's turn comes.
QString Transaction::fate()
{
    const Dialect &dialect = m_database.dialect();
    const QString asked = dialect.fateOf(m_database.m_transactionId);
    try {
        for (const QString &statement : dialect.beginWrite())
            m_database.runOnce(statement);
        const QString found = m_database.textOnce(asked, QStringLiteral("fate"));
        rollBack();
        return found;
    } catch (const SqlError &) {
        rollBack();
        throw;
    }
}

void Transaction::rollBack()
{
    m_isOpen = false;
    m_database.m_transactionDepth = m_depth;
    try {
        if (m_depth > 0) {
            m_database.runOnce(QStringLiteral("ROLLBACK TO SAVEPOINT ") + savepoint(m_depth));
            m_database.runOnce(QStringLiteral("RELEASE SAVEPOINT ") + savepoint(m_depth));
        } else {
            m_database.runOnce(QStringLiteral("ROLLBACK"));
        }
        m_database.transactionGoesOn();
    } catch (const std::exception &error) {
        // A full disk or a lost connection has already undone the whole change. Otherwise it
        // is still open, and the next transaction could not begin.
        m_database.m_isAbandoned = true;
        qCDebug(lcRecords).noquote() << "rollback:" << error.what();
    }
}

} // namespace KODMS::Services
