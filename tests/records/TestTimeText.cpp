// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/TimeText.h"
#include "tests/support/TestMain.h"

#include <QDateTime>
#include <QTest>

#include <ctime>
#include <random>

using namespace KODMS::Services;

/// What people see of a stored time, in zones with and without a summer time.
class TestTimeText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aTimeIsShownAsTheClockOnTheWallHadIt_data();
    void aTimeIsShownAsTheClockOnTheWallHadIt();
    void anyTimeIsShownAsQtShowsIt_data();
    void anyTimeIsShownAsQtShowsIt();
    void anotherZoneIsNoticed();
    void whatIsNoTimeStaysAsItIs_data();
    void whatIsNoTimeStaysAsItIs();
    void cleanup();

private:
    /// Rules as text need no file of the system.
    static void moveTo(const char *zone)
    {
        qputenv("TZ", zone);
        tzset();
    }

    static QString shownByQt(const QString &stored)
    {
        return QDateTime::fromString(stored, Qt::ISODateWithMs)
            .toLocalTime()
            .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }

    const QByteArray m_home = qgetenv("TZ");
};

namespace {

constexpr auto shanghai = "CST-8";
constexpr auto berlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr auto lordHowe = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0";

} // namespace

void TestTimeText::cleanup()
{
    if (m_home.isNull())
        qunsetenv("TZ");
    else
        qputenv("TZ", m_home);
    tzset();
}

void TestTimeText::aTimeIsShownAsTheClockOnTheWallHadIt_data()
{
    QTest::addColumn<QString>("zone");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, const char *zone, const char *stored, const char *shown) {
        QTest::newRow(name) << QString::fromLatin1(zone) << QString::fromLatin1(stored)
                            << QString::fromLatin1(shown);
    };
    row("no summer time", shanghai, "2026-11-21T07:43:30.123Z", "2026-11-21 15:43:30");
    row("the next day", shanghai, "2026-12-31T16:00:00.000Z", "2027-01-01 00:00:00");
    row("before the summer", berlin, "2026-03-29T00:59:59.999Z", "2026-03-29 01:59:59");
    row("the summer begins", berlin, "2026-03-29T01:00:00.000Z", "2026-03-29 03:00:00");
    row("the hour that comes twice", berlin, "2026-10-25T00:30:00.000Z", "2026-10-25 02:30:00");
    row("the second time", berlin, "2026-10-25T01:30:00.000Z", "2026-10-25 02:30:00");
    row("half an hour", lordHowe, "2026-10-03T15:30:00.000Z", "2026-10-04 02:30:00");
    row("a leap day", berlin, "2028-02-29T23:30:00.000Z", "2028-03-01 00:30:00");
    row("the beginning", shanghai, "1970-01-01T00:00:00.000Z", "1970-01-01 08:00:00");
    row("before the beginning", shanghai, "1969-12-31T23:59:59.999Z", "1970-01-01 07:59:59");
    row("far away", shanghai, "2105-06-01T00:00:00.000Z", "2105-06-01 08:00:00");
    row("with an offset", shanghai, "2026-11-21T09:43:30.123+02:00", "2026-11-21 15:43:30");
}

void TestTimeText::aTimeIsShownAsTheClockOnTheWallHadIt()
{
    QFETCH(const QString, zone);
    QFETCH(const QString, stored);
    moveTo(zone.toLatin1().constData());
    QTEST(shownTime(stored), "shown");
}

void TestTimeText::anyTimeIsShownAsQtShowsIt_data()
{
    QTest::addColumn<QString>("zone");
    QTest::newRow("no summer time") << QString::fromLatin1(shanghai);
    QTest::newRow("an hour in summer") << QString::fromLatin1(berlin);
    QTest::newRow("half an hour in summer") << QString::fromLatin1(lordHowe);
}

void TestTimeText::anyTimeIsShownAsQtShowsIt()
{
    QFETCH(const QString, zone);
    moveTo(zone.toLatin1().constData());
    std::mt19937 random(7); // NOLINT(cert-msc51-cpp): the same times in every run
    constexpr qint64 century = 100LL * 366 * 24 * 3600 * 1000;
    std::uniform_int_distribution<qint64> moments(0, century);
    for (int i = 0; i < 5000; ++i) {
        const auto time = QDateTime::fromMSecsSinceEpoch(moments(random), Qt::UTC);
        const QString stored = storedTime(time);
        QCOMPARE(shownTime(stored), shownByQt(stored));
    }
}

/// By what is asked for the zone in the course of things, at the latest after a second.
void TestTimeText::anotherZoneIsNoticed()
{
    const QString stored = QStringLiteral("2026-11-21T07:43:30.123Z");
    moveTo(shanghai);
    QCOMPARE(shownTime(stored), QStringLiteral("2026-11-21 15:43:30"));
    qputenv("TZ", berlin);
    QTRY_COMPARE_WITH_TIMEOUT(shownTime(stored), QStringLiteral("2026-11-21 08:43:30"), 30'000);
}

void TestTimeText::whatIsNoTimeStaysAsItIs_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"", "yesterday", "2026-13-01T00:00:00.000Z", "2026-02-30T00:00:00.000Z",
          "2026-11-21T25:00:00.000Z", "2026-11-21T07:43:3x.123Z"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TestTimeText::whatIsNoTimeStaysAsItIs()
{
    QFETCH(const QString, text);
    QCOMPARE(shownTime(text), text);
}

KODMS_TEST_MAIN(TestTimeText, QCoreApplication)
#include "TestTimeText.moc"
