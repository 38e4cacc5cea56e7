// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/TempDatabase.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace KODMS::Services;
using KODMS::Tests::TempDatabase;

/// What the triggers write for those who keep a copy of the searched fields.
class TestChangeLog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlySearchedColumnsReachTheChangeLog_data();
    void onlySearchedColumnsReachTheChangeLog();
};

void TestChangeLog::onlySearchedColumnsReachTheChangeLog_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("columns");
    QTest::addColumn<int>("entries"); // of one change of one of the columns
    QTest::newRow("flow, searched")
        << "job_flows"
        << "job_name orig_job_name flow_status check_flag batch_number tips create_user_id "
           "last_import_user_id last_import_time"
        << 1;
    QTest::newRow("flow, creation time: both desks show it") << "job_flows"
                                                             << "create_time" << 2;
    QTest::newRow("flow, not searched")
        << "job_flows"
        << "orig_file_id last_import_file_id result_file_id check_user_id check_time result_time "
           "robot_check_user_id robot_check_time state_version file_version assignment_version "
           "remark_version"
        << 0;
    QTest::newRow("original file, searched")
        << "job_compress"
        << "customer_id serial_number orig_name description tips flow_create_time" << 1;
    QTest::newRow("original file, not searched") << "job_compress"
                                                 << "orig_file_id update_time update_user_id" << 0;
    QTest::newRow("job, searched") << "jobs"
                                   << "layer_count feature_count create_user_id" << 1;
    QTest::newRow("job, not searched") << "jobs"
                                       << "pre_check_flag check_flag create_time" << 0;
    QTest::newRow("executor: both desks show him") << "orig_file_assign"
                                                   << "executor_id" << 2;
    QTest::newRow("reviewer") << "pre_check_assign"
                              << "executor_id" << 1;
    QTest::newRow("assignment, not searched") << "orig_file_assign"
                                              << "assign_user_id assign_time" << 0;
    QTest::newRow("customer, searched") << "customers"
                                        << "code short_name superior_1 superior_2" << 1;
    QTest::newRow("customer, not searched") << "customers"
                                            << "last_serial" << 0;
    QTest::newRow("person, searched") << "users"
                                      << "real_name" << 1;
    QTest::newRow("person, not searched") << "users"
                                          << "last_sign_in_time password_hash" << 0;
    QTest::newRow("order") << "orders"
                           << "payment suffix pay_time" << 0;
}

void TestChangeLog::onlySearchedColumnsReachTheChangeLog()
{
    QFETCH(QString, table);
    QFETCH(QString, columns);
    QFETCH(int, entries);
    TempDatabase database;
    const QString now = QStringLiteral("'2026-11-21T00:00:00.000Z'");
    const auto insert = [&](const char *row) {
        database->run(QString::fromLatin1(row).arg(now).prepend(QStringLiteral("INSERT INTO ")));
    };
    insert("users (login_name, real_name, create_time) VALUES ('li', 'x', %1)");
    insert("customers (code, create_time) VALUES ('A1B', %1)");
    insert("jobs (name, customer_id, serial_number, create_time) VALUES ('A1B000001', 1, 1, %1)");
    insert("job_flows (guid, job_name, create_time) VALUES ('g', 'A1B000001', %1)");
    insert("job_compress (flow_id, customer_id, serial_number, flow_create_time, create_time, "
           "update_time) VALUES (1, 1, 1, %1, %1, %1)");
    insert("orders (flow_id, create_time) VALUES (1, %1)");
    insert("orig_file_assign (flow_id, executor_id, assign_time) VALUES (1, 1, %1)");
    insert("pre_check_assign (flow_id, executor_id, assign_time) VALUES (1, 1, %1)");
    const auto logged = [&database] {
        SqlQuery query = database->prepare(QStringLiteral("SELECT count(*) AS n FROM change_log"));
        query.exec().next();
        return query.number("n");
    };
    for (const QString &column : columns.split(QLatin1Char(' '))) {
        const int before = logged();
        database->run(QStringLiteral("UPDATE %1 SET %2 = %2").arg(table, column));
        QVERIFY2(logged() == before + entries, qPrintable(column));
    }
}

KODMS_TEST_MAIN(TestChangeLog, QCoreApplication)
#include "TestChangeLog.moc"
