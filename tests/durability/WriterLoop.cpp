// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/durability/WriterLoop.h"

#include "services/records/Transaction.h"
#include "services/records/bll/Audit.h"
#include "tests/durability/StateHash.h"

#include <poll.h>
#include <unistd.h>

namespace KODMS::Tests {

using namespace Services;

namespace {

constexpr int KeptIntakes = 32;
constexpr unsigned PauseMicroseconds = 2000;

bool isInputOpen()
{
    pollfd input{STDIN_FILENO, POLLIN | POLLHUP, 0};
    return ::poll(&input, 1, 0) == 0;
}

Database &database()
{
    return Runtime::current()->records().database();
}

int intOf(SqlQuery query, const char *column)
{
    return query.exec().next() ? query.number(column) : 0;
}

} // namespace

int WriterLoop::run(quint32 seed)
{
    QRandomGenerator random(seed);
    int changes = 0;
    while (isInputOpen()) {
        try {
            changes += changeAndRemember(random) ? 1 : 0;
        } catch (const SqlError &error) {
            if (error.kind() != SqlError::Kind::Busy)
                throw;
        }
        ::usleep(PauseMicroseconds);
    }
    return changes;
}

bool WriterLoop::changeAndRemember(QRandomGenerator &random)
{
    if (random.bounded(4) == 0 && deleteOldestIntake())
        return true;
    static const QStringList kinds{QStringLiteral("intake"), QStringLiteral("remark"),
                                   QStringLiteral("verdict"), QStringLiteral("assign")};
    Transaction transaction(database());
    const int before = lastEvent(database());
    if (!m_steps.perform(kinds.at(random.bounded(kinds.size()))))
        return false;
    if (lastEvent(database()) == before)
        qFatal("a change without an audit event");
    rememberState(database());
    transaction.commit();
    return true;
}

/// As the original-file desk does it: the records first, then the stored file.
bool WriterLoop::deleteOldestIntake()
{
    QString storedName;
    {
        Transaction transaction(database());
        if (intOf(database().query("count_flows"), "total") < KeptIntakes)
            return false;
        SqlQuery oldest = database().prepare(
            QStringLiteral("SELECT f.id, o.id AS file, o.stored_name FROM job_flows f "
                           "JOIN orig_files o ON o.id = f.orig_file_id "
                           "WHERE f.id > 5 AND f.last_import_file_id IS NULL "
                           "ORDER BY f.id LIMIT 1"));
        if (!oldest.exec().next())
            return false;
        storedName = oldest.text("stored_name");
        const int flow = oldest.number("id");
        const int file = oldest.number("file");
        for (const char *statement :
             {"DELETE FROM job_compress WHERE flow_id = ?", "DELETE FROM orders WHERE flow_id = ?",
              "DELETE FROM pre_check_assign WHERE flow_id = ?",
              "DELETE FROM job_flows WHERE id = ?"})
            database().prepare(QLatin1String(statement)).bind(0, flow).exec();
        database()
            .prepare(QStringLiteral("DELETE FROM orig_files WHERE id = ?"))
            .bind(0, file)
            .exec();
        writeAudit(database(), {1, QStringLiteral("file.DelOrigFile"), QStringLiteral("file"), file,
                                storedName, QString(), QString(), false});
        rememberState(database());
        transaction.commit();
    }
    return bool(Runtime::current()->fileStore().remove(storedName));
}

} // namespace KODMS::Tests
