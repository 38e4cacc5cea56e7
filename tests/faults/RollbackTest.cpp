// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Transaction.h"
#include "tests/faults/FaultPlan.h"
#include "tests/faults/FaultySqlDriver.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// A transaction that cannot even be rolled back.
class RollbackTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theNextTransactionBegins_data();
    void theNextTransactionBegins();
};

void RollbackTest::theNextTransactionBegins_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("the rollback fails") << static_cast<int>(FaultKind::Failed);
    QTest::newRow("the rollback throws") << static_cast<int>(FaultKind::Thrown);
}

void RollbackTest::theNextTransactionBegins()
{
    QFETCH(int, kind);
    FaultySqlDriver::install();
    TempDatabase home;
    Database &database = *home;
    database.run(QStringLiteral("CREATE TABLE marks (name TEXT)"));
    const auto mark = [&](const char *name) {
        database.prepare(QStringLiteral("INSERT INTO marks VALUES (?)"))
            .bind(0, QString::fromLatin1(name))
            .exec();
    };
    {
        const Transaction undone(database);
        mark("undone");
        FaultPlan::arm(FaultLayer::Records, static_cast<FaultKind>(kind), 1);
    }
    FaultPlan::disarm();
    QVERIFY(FaultPlan::isHit());
    Transaction next(database);
    mark("done");
    next.commit();
    SqlQuery marks = database.prepare(QStringLiteral("SELECT name FROM marks"));
    QVERIFY(marks.exec().next());
    QCOMPARE(marks.text("name"), QStringLiteral("done"));
    QVERIFY(!marks.next());
}

KODMS_TEST_MAIN(RollbackTest, QCoreApplication)
#include "RollbackTest.moc"
