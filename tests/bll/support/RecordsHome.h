// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Database.h"
#include "services/records/RecordContext.h"
#include "services/records/bll/SessionMemory.h"
#include "services/records/bll/UserRecords.h"
#include "tests/bll/support/FakeStoredFiles.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestDatabase.h"

#include <QVariantMap>

#include <memory>

namespace KODMS::Tests {

/// A job with everything that belongs to it.
struct TestJob {
    int flowId = 0;
    int rowId = 0;  ///< of the original-file desk
    int fileId = 0; ///< its original file
    std::string flowGuid;
    std::string jobName;
    std::string fileGuid;
    std::string storedName;
};

/// One signed-in session on the records.
struct TestSession {
    std::unique_ptr<Services::RecordContext> context;
    Services::SessionMemory memory;
};

/// Records on a real database of its own, the same at the start of
/// every test function: made once, copied each time.
class RecordsHome {
public:
    RecordsHome();
    ~RecordsHome();

    /// Throws away what the last test did.
    void reset();

    Services::DatabaseSettings settings() const;

    /// What names the database to another process of the test.
    QString place() const { return m_place.place(); }

    Services::Database &database() { return *m_database; }

    FakeStoredFiles &files() { return m_files; }

    /// A user with exactly these roles.
    int addUser(const QString &login, const Services::RoleSet &roles = {}, int department = 2,
                int post = 6);
    TestJob addJob(int status = 0, int flag = 0);
    /// A recorded file that is in the store; returns its GUID.
    std::string addFile(const QString &storedName, const QString &type,
                        const QString &customer = QStringLiteral("A1B"));
    int addQuestion(const TestJob &job);

    void set(const QString &table, const QString &column, const QVariant &value, int id);
    QVariant get(const QString &table, const QString &column, int id);
    /// What the statement's one row has in its column "value".
    QVariant one(const QString &sql);

    /// The first column of every row.
    QStringList column(const QString &sql) const { return PlainConnection(settings()).texts(sql); }

    /// Every row of every table but the audit and the change log, as text.
    QString dump();

    int refusals()
    {
        return one(QStringLiteral("SELECT count(*) AS value FROM events WHERE refused = 1"))
            .toInt();
    }

    int events()
    {
        return one(QStringLiteral("SELECT count(*) AS value FROM events WHERE refused = 0"))
            .toInt();
    }

    /// The columns of the newest audit row.
    QVariantMap lastEvent();

    /// A session of its own connection, current from now on. User 0: nobody.
    TestSession &signIn(int userId);
    void makeCurrent(TestSession &session);

    TestSession &session() { return *m_sessions.back(); }

    /// As the searches do: the session has seen the job as it stands.
    void show(TestSession &session, const TestJob &job);

private:
    void close();
    int insert(const QString &table, const QVariantMap &values);

    TestDatabase m_pristine;
    TestDatabase m_place;
    FakeStoredFiles m_files;
    std::unique_ptr<Services::Database> m_database;
    std::vector<std::unique_ptr<TestSession>> m_sessions;
    int m_jobs = 0;
};

} // namespace KODMS::Tests
