// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Orders.h"
#include "services/api/SignIn.h"
#include "services/api/UserAdmin.h"
#include "services/session/Runtime.h"
#include "tests/api/support/Installation.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <memory>

using namespace KODMS::Services;
using KODMS::Tests::Installation;

class OrdersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_home.reset(); }

    void paysOnce();
    void saysWhatIsMissing();
    void needsAnAdministrator();
    void withoutServices();

private:
    static Database &database() { return Runtime::current()->records().database(); }

    static int number(const char *sql)
    {
        SqlQuery query = database().prepare(QString::fromLatin1(sql));
        query.exec();
        return query.next() ? query.number("value") : -1;
    }

    const QString m_job = QStringLiteral("web000001");
    std::unique_ptr<Installation> m_home;
};

void OrdersTest::init()
{
    m_home = std::make_unique<Installation>();
    m_home->initAndStart();
    for (const char *sql : {"INSERT INTO customers (code, create_time) VALUES ('web', '')",
                            "INSERT INTO jobs (name, customer_id, serial_number, create_time) "
                            "VALUES ('web000001', 1, 1, ''), ('web000002', 1, 2, '')",
                            "INSERT INTO job_flows (guid, job_name, create_time) "
                            "VALUES ('g1', 'web000001', ''), ('g2', 'web000002', '')",
                            "INSERT INTO orders (flow_id, create_time) VALUES (1, '')"})
        database().run(QString::fromLatin1(sql));
}

void OrdersTest::paysOnce()
{
    QVERIFY(Orders::pay(m_job));
    QCOMPARE(number("SELECT payment AS value FROM orders"), 1);
    QVERIFY(Orders::pay(m_job));
    QCOMPARE(number("SELECT count(*) AS value FROM events WHERE action = 'order.pay'"), 1);
}

void OrdersTest::saysWhatIsMissing()
{
    const Outcome noJob = Orders::pay(QStringLiteral("A1B000001"));
    QVERIFY(!noJob);
    QVERIFY(noJob.text.contains(QStringLiteral("A1B000001")));
    const Outcome noOrder = Orders::pay(QStringLiteral("web000002"));
    QVERIFY(!noOrder);
    QVERIFY(noOrder.text != noJob.text);
    QVERIFY(!Orders::pay(QString()));
}

void OrdersTest::needsAnAdministrator()
{
    NewUser user;
    user.loginName = QStringLiteral("anna");
    user.realName = QStringLiteral("安娜");
    user.password = QStringLiteral("anna's password");
    QVERIFY(UserAdmin::add(user));
    QVERIFY(SignIn::signIn(user.loginName, user.password));
    QVERIFY(!Orders::pay(m_job));
    QCOMPARE(number("SELECT payment AS value FROM orders"), 0);
    QCOMPARE(
        number("SELECT count(*) AS value FROM events WHERE action = 'order.pay' AND refused = 1"),
        1);
    QVERIFY(SignIn::signIn(Installation::login(), Installation::password()));
    QVERIFY(Orders::pay(m_job));
}

void OrdersTest::withoutServices()
{
    ServiceRuntime::instance().stop();
    QVERIFY(!Orders::pay(m_job));
}

KODMS_TEST_MAIN(OrdersTest, QCoreApplication)

#include "OrdersTest.moc"
