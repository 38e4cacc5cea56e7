// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestDatabase.h"

#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QTest>

using KODMS::Tests::PlainConnection;
using KODMS::Tests::TestDatabase;

/// What every test on records stands on: a place of its own, on the engine in force.
class TestDatabaseTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void isTheEngineInForce()
    {
        const TestDatabase place;
        const bool server = qEnvironmentVariableIsSet("KODMS_TEST_ENGINE");
        QCOMPARE(place.settings().driver == QLatin1String("postgres"), server);
        const QStringList version = PlainConnection(place.settings())
                                        .texts(server ? QStringLiteral("SHOW server_encoding")
                                                      : QStringLiteral("PRAGMA encoding"));
        QCOMPARE(version.value(0).remove(QLatin1Char('-')), QStringLiteral("UTF8"));
    }

    void beginsEmptyAndStandsAlone()
    {
        const TestDatabase first;
        const TestDatabase second;
        const PlainConnection connection(first.settings());
        QCOMPARE(connection.tables(), QStringList());
        connection.run(QStringLiteral("CREATE TABLE notes (text TEXT)"));
        QCOMPARE(connection.tables(), QStringList{QStringLiteral("notes")});
        QCOMPARE(PlainConnection(second.settings()).tables(), QStringList());
    }

    void isFoundByItsName()
    {
        const TestDatabase place;
        PlainConnection(place.settings()).run(QStringLiteral("CREATE TABLE notes (text TEXT)"));
        const PlainConnection other(TestDatabase::settingsAt(place.place()));
        QCOMPARE(other.tables(), QStringList{QStringLiteral("notes")});
    }

    void becomesACopyAgainAndAgain()
    {
        const TestDatabase pristine;
        {
            const PlainConnection connection(pristine.settings());
            connection.run(QStringLiteral("CREATE TABLE notes (id INTEGER, text TEXT)"));
            connection.run(QStringLiteral("INSERT INTO notes VALUES (1, '孔径'), (2, NULL)"));
        }
        TestDatabase copy(TestDatabase::Begin::Absent);
        for (int i = 0; i < 3; ++i) {
            copy.copyFrom(pristine);
            const PlainConnection connection(copy.settings());
            const QStringList rows{QStringLiteral("'1|'孔径"), QStringLiteral("'2|null")};
            QCOMPARE(connection.sortedRows(QStringLiteral("SELECT * FROM notes")), rows);
            connection.run(QStringLiteral("DELETE FROM notes"));
        }
        QCOMPARE(PlainConnection(pristine.settings())
                     .texts(QStringLiteral("SELECT count(*) FROM notes")),
                 QStringList{QStringLiteral("2")});
    }

    void isGoneAfterwards()
    {
        const TestDatabase watch;
        QString name;
        {
            const TestDatabase place;
            name = place.place();
            const PlainConnection connection(place.settings());
            connection.run(QStringLiteral("CREATE TABLE notes (text TEXT)"));
            QVERIFY(isThere(name, watch));
        }
        QVERIFY(!isThere(name, watch));
    }

private:
    static bool isThere(const QString &name, const TestDatabase &watch)
    {
        if (!TestDatabase::isServer())
            return QFile::exists(name);
        return PlainConnection(watch.settings())
            .texts(QStringLiteral("SELECT datname FROM pg_database"))
            .contains(name);
    }
};

KODMS_TEST_MAIN(TestDatabaseTest, QCoreApplication)
#include "TestDatabaseTest.moc"
