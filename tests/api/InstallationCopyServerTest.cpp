// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/copy/CopiedTable.h"
#include "tests/api/support/CopyHouse.h"
#include "tests/api/support/Interlude.h"
#include "tests/support/ServersImpatience.h"
#include "tests/support/TestMain.h"

#include <QTest>
#include <QThread>

using namespace KODMS::Services;
using KODMS::Tests::CopyHouse;
using KODMS::Tests::Interlude;
using KODMS::Tests::PlainConnection;
using KODMS::Tests::ServersImpatience;

/// What only a server does to an installation that is moved there or away from it.
class InstallationCopyServerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void aServersImpatienceEndsNoCopy();
    void theServerKnowsItsTablesAfterwards();

private:
    CopyHouse m_house;
};

void InstallationCopyServerTest::initTestCase()
{
    const QString problem = m_house.make();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void InstallationCopyServerTest::init()
{
    m_house.renewTarget();
}

/// A copy is silent on one side while it reads or writes on the other, for as long as that takes.
void InstallationCopyServerTest::aServersImpatienceEndsNoCopy()
{
    QVERIFY(InstallationSetup::init(m_house.target(), QStringLiteral("first"),
                                    QStringLiteral("别人"), QStringLiteral("another password")));
    const DatabaseSettings server = CopyHouse::databaseOf(m_house.target());
    {
        const PlainConnection plain(server);
        plain.run(QStringLiteral(
            "CREATE FUNCTION refuse_limits() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN "
            "IF EXISTS (SELECT 1 FROM pg_settings WHERE setting <> '0' AND name IN "
            "('statement_timeout', 'idle_in_transaction_session_timeout')) "
            "THEN RAISE EXCEPTION 'there is a limit'; END IF; RETURN NEW; END; $$"));
        plain.run(QStringLiteral("CREATE TRIGGER refuse_limits BEFORE INSERT ON job_flows "
                                 "FOR EACH ROW EXECUTE FUNCTION refuse_limits()"));
    }
    const auto there = m_house.copy();
    QVERIFY2(there.outcome.ok, qPrintable(there.text()));
    const QString back = m_house.place("back");
    QVERIFY(Configuration::defaultsFor(back).save());
    const ServersImpatience impatience(server);
    Interlude silence([] { QThread::msleep(3 * ServersImpatience::Milliseconds); });
    const auto copied = InstallationCopy::copy(m_house.target(), back, silence);
    QVERIFY2(copied.outcome.ok, qPrintable(copied.text()));
    QCOMPARE(CopyHouse::dump(back), m_house.before());
}

/// The test's server counts nothing of itself.
void InstallationCopyServerTest::theServerKnowsItsTablesAfterwards()
{
    const auto copied = m_house.copy();
    QVERIFY2(copied.outcome.ok, qPrintable(copied.text()));
    const PlainConnection plain(CopyHouse::databaseOf(m_house.target()));
    const QStringList known = plain.texts(
        QStringLiteral("SELECT DISTINCT tablename FROM pg_stats WHERE schemaname = 'public'"));
    for (const CopiedTableProof &table : copied.value.tables)
        QVERIFY2(table.rows == 0 || known.contains(table.table), qPrintable(table.table));
    QVERIFY(known.contains(QStringLiteral("job_flows")));
}

KODMS_TEST_MAIN(InstallationCopyServerTest, QCoreApplication)
#include "InstallationCopyServerTest.moc"
