// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/LiveChanges.h"
#include "services/session/Runtime.h"
#include "tests/api/support/Installation.h"
#include "tests/api/support/OtherDesk.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <memory>

using namespace KODMS::Services;
using KODMS::Tests::Installation;
using KODMS::Tests::OtherDesk;
using KODMS::UI::DMS_UICommon;

namespace {

constexpr int patience = 60'000;
constexpr int aDay = 24 * 3600 * 1000;

} // namespace

/// The server's word, without which nobody would look before tomorrow.
class LiveNoticeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aChangeOfAnotherProgramIsTold();
    void itIsToldAlsoAfterARefresh();
    void itIsToldAlsoOnANewConnection();

private:
    void payElsewhere(const QString &job) const
    {
        QVERIFY(OtherDesk::pay(m_home->iniPath(), {job}));
    }

    static Database &database() { return Runtime::current()->records().database(); }

    static int count() { return LiveChanges::instance().count(); }

    std::unique_ptr<Installation> m_home;
};

void LiveNoticeTest::init()
{
    m_home = std::make_unique<Installation>();
    m_home->initAndStart();
    OtherDesk::makeOrders(database());
    LiveChanges::instance().setIntervalWhenTold(aDay);
    LiveChanges::instance().begin();
    LiveChanges::instance().setWatched(true);
}

void LiveNoticeTest::cleanup()
{
    LiveChanges::instance().setWatched(false);
    LiveChanges::instance().setIntervalWhenTold(LiveChanges::IntervalWhenTold);
    m_home.reset();
}

void LiveNoticeTest::aChangeOfAnotherProgramIsTold()
{
    payElsewhere(QStringLiteral("web000001"));
    QCOMPARE(count(), 0); // the word waits for the event loop
    QTRY_COMPARE_WITH_TIMEOUT(count(), 1, patience);
    payElsewhere(QStringLiteral("web000002"));
    QTRY_COMPARE_WITH_TIMEOUT(count(), 2, patience);
}

void LiveNoticeTest::itIsToldAlsoAfterARefresh()
{
    payElsewhere(QStringLiteral("web000001"));
    QTRY_COMPARE_WITH_TIMEOUT(count(), 1, patience);
    DMS_UICommon::interface()->emitGobalSingal();
    QCOMPARE(count(), 0);
    payElsewhere(QStringLiteral("web000002"));
    QTRY_COMPARE_WITH_TIMEOUT(count(), 1, patience);
}

/// The next action makes the connection anew, and with it the ear for the server. That itself is
/// a reason to look: only what comes after it is told by the server alone.
void LiveNoticeTest::itIsToldAlsoOnANewConnection()
{
    const int generation = database().generation();
    const KODMS::Tests::PlainConnection plain(m_home->place());
    plain.run(QStringLiteral("SELECT pg_terminate_backend(pid, 30000) FROM pg_stat_activity "
                             "WHERE datname = current_database() AND pid <> pg_backend_pid()"));
    database().run(QStringLiteral("SELECT 1"));
    QCOMPARE(database().generation(), generation + 1);
    payElsewhere(QStringLiteral("web000001"));
    QTRY_COMPARE_WITH_TIMEOUT(count(), 1, patience);
    QTest::qWait(1000); // until everything that was told of the first has been looked into
    payElsewhere(QStringLiteral("web000002"));
    QTRY_COMPARE_WITH_TIMEOUT(count(), 2, patience);
}

int main(int argc, char **argv)
{
    KODMS::Tests::prepareEnvironment();
    QCoreApplication app(argc, argv);
    if (const auto code = OtherDesk::workIfAsked())
        return *code;
    LiveNoticeTest test;
    return KODMS::Tests::runTests(&test, QCoreApplication::arguments());
}

#include "LiveNoticeTest.moc"
