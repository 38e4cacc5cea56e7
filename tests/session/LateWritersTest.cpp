// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Transaction.h"
#include "services/session/ForeignChanges.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <functional>
#include <memory>

using namespace KODMS::Services;
using KODMS::Tests::PlainConnection;
using KODMS::Tests::RecordsHome;
using KODMS::Tests::TestSession;

/// On a server a writer that does not know our writers' lock may begin before others and end
/// after them. Its changes are counted when they can be seen.
class LateWritersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void whatBeganFirstAndEndsLastIsCounted();
    void whatEndsDuringAnOwnWriteIsCounted();
    void whatEndsAfterAnOwnWriteIsCounted();
    void anOwnWriteBesideOneAtWorkIsNotCounted();

private:
    void beginLate() const;
    void writeHere(const std::function<void()> &beforeTheEnd = {}) const;

    int look()
    {
        m_changes->look();
        return m_changes->count();
    }

    std::unique_ptr<RecordsHome> m_home;
    TestSession *m_here = nullptr;
    std::unique_ptr<PlainConnection> m_late;
    std::unique_ptr<ForeignChanges> m_changes;
};

void LateWritersTest::init()
{
    m_home = std::make_unique<RecordsHome>();
    m_home->addJob();
    m_here = &m_home->signIn(m_home->addUser(QStringLiteral("here"), {Role::Admin}));
    m_late = std::make_unique<PlainConnection>(m_home->settings());
    m_changes = std::make_unique<ForeignChanges>(m_here->context->database());
}

void LateWritersTest::cleanup()
{
    m_changes.reset();
    m_late.reset();
    m_home.reset();
}

void LateWritersTest::beginLate() const
{
    m_late->run(QStringLiteral("BEGIN"));
    m_late->run(QStringLiteral("UPDATE customers SET short_name = 'late'"));
}

/// With an entry in the log whose number is larger than the late one's.
void LateWritersTest::writeHere(const std::function<void()> &beforeTheEnd) const
{
    Database &database = m_here->context->database();
    Transaction transaction(database);
    database.run(QStringLiteral("UPDATE job_flows SET tips = 'mine'"));
    if (beforeTheEnd)
        beforeTheEnd();
    transaction.commit();
}

void LateWritersTest::whatBeganFirstAndEndsLastIsCounted()
{
    beginLate();
    m_changes->begin();
    const PlainConnection other(m_home->settings());
    other.run(QStringLiteral("UPDATE job_flows SET tips = 'other'"));
    QCOMPARE(look(), 1);
    m_changes->begin();
    QCOMPARE(look(), 0);
    m_late->run(QStringLiteral("COMMIT"));
    QCOMPARE(look(), 1);
    m_changes->begin();
    QCOMPARE(look(), 0);
}

void LateWritersTest::whatEndsDuringAnOwnWriteIsCounted()
{
    beginLate();
    m_changes->begin();
    writeHere([this] { m_late->run(QStringLiteral("COMMIT")); });
    QCOMPARE(look(), 1);
}

void LateWritersTest::whatEndsAfterAnOwnWriteIsCounted()
{
    beginLate();
    m_changes->begin();
    writeHere();
    QCOMPARE(look(), 0);
    m_late->run(QStringLiteral("COMMIT"));
    QCOMPARE(look(), 1);
}

/// A transaction at work keeps the mark of our own among those that had not ended.
void LateWritersTest::anOwnWriteBesideOneAtWorkIsNotCounted()
{
    beginLate();
    m_changes->begin();
    writeHere();
    writeHere();
    QCOMPARE(look(), 0);
    m_late->run(QStringLiteral("ROLLBACK"));
    QCOMPARE(look(), 0);
    writeHere();
    QCOMPARE(look(), 0);
}

KODMS_TEST_MAIN(LateWritersTest, QCoreApplication)
#include "LateWritersTest.moc"
