// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/LiveChanges.h"

#include "foundation/ui/DMS_UICommon.h"
#include "services/api/Orders.h"
#include "services/notices/NoticeHub.h"
#include "services/records/Transaction.h"
#include "services/session/Runtime.h"
#include "tests/api/support/Installation.h"
#include "tests/api/support/OtherDesk.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using KODMS::Tests::Installation;
using KODMS::Tests::OtherDesk;
using KODMS::UI::DMS_UICommon;

namespace {

constexpr int patience = 30'000;

} // namespace

/// What another program changes while this one shows records.
class LiveChangesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aChangeOfAnotherProgramIsNoticed();
    void ownChangesAreNot();
    void anyRefreshCountsFromZero();
    void nobodyWhoLooksMeansNoLook();
    void signingOutEndsIt();
    void aFailureIsLoggedOnce();
    void aFailureIsSignalledUntilItIsOver();
    void onlyAnErrorThatWasToldHasItsEndTold();
    void notInTheMiddleOfAChange();
    void withoutServicesNothingHappens();

private:
    void payElsewhere(const QStringList &jobs) const
    {
        QVERIFY(OtherDesk::pay(m_home->iniPath(), jobs));
    }

    static Database &database() { return Runtime::current()->records().database(); }

    static void lookNow();
    static void hideEvents();
    static void showEvents();

    std::unique_ptr<Installation> m_home;
};

void LiveChangesTest::init()
{
    m_home = std::make_unique<Installation>();
    m_home->initAndStart();
    OtherDesk::makeOrders(database());
    LiveChanges::instance().begin();
    LiveChanges::instance().setWatched(true);
}

void LiveChangesTest::cleanup()
{
    LiveChanges::instance().setWatched(false);
    m_home.reset();
}

/// What otherwise happens within two seconds.
void LiveChangesTest::lookNow()
{
    LiveChanges::instance().setWatched(false);
    LiveChanges::instance().setWatched(true);
}

/// The next look fails, which is announced here.
void LiveChangesTest::hideEvents()
{
    database().run(QStringLiteral("ALTER TABLE events RENAME TO gone"));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("look for changes by others.*events")));
}

void LiveChangesTest::showEvents()
{
    database().run(QStringLiteral("ALTER TABLE gone RENAME TO events"));
}

void LiveChangesTest::aChangeOfAnotherProgramIsNoticed()
{
    QSignalSpy told(&LiveChanges::instance(), &LiveChanges::countChanged);
    payElsewhere({QStringLiteral("web000001"), QStringLiteral("web000002")});
    QTRY_COMPARE_WITH_TIMEOUT(LiveChanges::instance().count(), 2, patience);
    QCOMPARE(told.last().at(0).toInt(), 2);
    told.clear();
    lookNow();
    QCOMPARE(told.size(), 0);
}

void LiveChangesTest::ownChangesAreNot()
{
    QVERIFY(Orders::pay(QStringLiteral("web000003")));
    lookNow();
    QCOMPARE(LiveChanges::instance().count(), 0);
    payElsewhere({QStringLiteral("web000001")});
    QVERIFY(Orders::pay(QStringLiteral("web000002")));
    lookNow();
    QCOMPARE(LiveChanges::instance().count(), 1);
}

void LiveChangesTest::anyRefreshCountsFromZero()
{
    payElsewhere({QStringLiteral("web000001")});
    lookNow();
    QCOMPARE(LiveChanges::instance().count(), 1);
    int countForTheDesks = -1;
    QObject desk;
    connect(DMS_UICommon::interface(), &DMS_UICommon::refreshOrigFileTable, &desk,
            [&countForTheDesks] { countForTheDesks = LiveChanges::instance().count(); });
    DMS_UICommon::interface()->emitGobalSingal();
    QCOMPARE(countForTheDesks, 0); // it begins before they read
    lookNow();
    QCOMPARE(LiveChanges::instance().count(), 0);
    payElsewhere({QStringLiteral("web000002")});
    lookNow();
    QCOMPARE(LiveChanges::instance().count(), 1);
}

void LiveChangesTest::nobodyWhoLooksMeansNoLook()
{
    LiveChanges::instance().setWatched(false);
    QVERIFY(!LiveChanges::instance().isWatched());
    payElsewhere({QStringLiteral("web000001")});
    QTest::qWait(LiveChanges::Interval + 500);
    QCOMPARE(LiveChanges::instance().count(), 0);
    LiveChanges::instance().setWatched(true);
    QCOMPARE(LiveChanges::instance().count(), 1);
}

void LiveChangesTest::signingOutEndsIt()
{
    payElsewhere({QStringLiteral("web000001")});
    lookNow();
    QCOMPARE(LiveChanges::instance().count(), 1);
    SignIn::signOut();
    QCOMPARE(LiveChanges::instance().count(), 0);
    QVERIFY(!LiveChanges::instance().isWatched());
    payElsewhere({QStringLiteral("web000002")});
    lookNow();
    QCOMPARE(LiveChanges::instance().count(), 0);
}

void LiveChangesTest::aFailureIsLoggedOnce()
{
    payElsewhere({QStringLiteral("web000001")});
    lookNow();
    hideEvents();
    lookNow();
    lookNow(); // a second warning would fail the test
    QCOMPARE(LiveChanges::instance().count(), 1);
    DMS_UICommon::interface()->emitGobalSingal();
    QCOMPARE(LiveChanges::instance().count(), 1); // what could not be read is not forgotten
    showEvents();
    payElsewhere({QStringLiteral("web000002")});
    lookNow();
    QTRY_COMPARE_WITH_TIMEOUT(LiveChanges::instance().count(), 2, patience);
}

void LiveChangesTest::aFailureIsSignalledUntilItIsOver()
{
    QSignalSpy told(&LiveChanges::instance(), &LiveChanges::failedChanged);
    hideEvents();
    lookNow();
    lookNow();
    QCOMPARE(told, QList<QVariantList>{{true}});
    showEvents();
    lookNow();
    QTRY_COMPARE_WITH_TIMEOUT(told.size(), 2, patience);
    QCOMPARE(told.last(), QVariantList{false});
    lookNow();
    QCOMPARE(told.size(), 2);
}

void LiveChangesTest::onlyAnErrorThatWasToldHasItsEndTold()
{
    QSignalSpy notices(&NoticeHub::instance(), &NoticeHub::raised);
    const auto end = [] {
        showEvents();
        lookNow();
        QTRY_VERIFY_WITH_TIMEOUT(!LiveChanges::instance().hasFailed(), patience);
    };
    hideEvents();
    lookNow();
    end();
    QCOMPARE(notices.size(), 0);

    NoticeHub::instance().raise(NoticeLevel::Error, QStringLiteral("of something else"));
    lookNow();
    hideEvents();
    lookNow();
    end();
    QCOMPARE(notices.size(), 1);

    hideEvents();
    NoticeHub::instance().raise(NoticeLevel::Error, QStringLiteral("of these records"));
    QTRY_VERIFY_WITH_TIMEOUT(LiveChanges::instance().hasFailed(), patience); // looks at once
    end();
    QCOMPARE(notices.size(), 3);
    QCOMPARE(notices.last(), (QVariantList{0, QStringLiteral("数据库恢复可用")}));
}

void LiveChangesTest::notInTheMiddleOfAChange()
{
    payElsewhere({QStringLiteral("web000001")});
    {
        const Transaction reading(database(), Transaction::Purpose::Read);
        lookNow();
        QCOMPARE(LiveChanges::instance().count(), 0);
    }
    lookNow();
    QCOMPARE(LiveChanges::instance().count(), 1);
}

void LiveChangesTest::withoutServicesNothingHappens()
{
    m_home.reset();
    LiveChanges::instance().begin();
    lookNow();
    DMS_UICommon::interface()->emitGobalSingal();
    QCOMPARE(LiveChanges::instance().count(), 0);
}

int main(int argc, char **argv)
{
    KODMS::Tests::prepareEnvironment();
    QCoreApplication app(argc, argv);
    if (const auto code = OtherDesk::workIfAsked())
        return *code;
    LiveChangesTest test;
    return KODMS::Tests::runTests(&test, QCoreApplication::arguments());
}

#include "LiveChangesTest.moc"
