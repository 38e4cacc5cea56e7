// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/api/support/OtherDesk.h"

#include "services/api/Orders.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"
#include "services/records/Database.h"

#include <QCoreApplication>
#include <QProcess>

#include <cstdio>

namespace KODMS::Tests {

using namespace Services;

namespace {

const QString payWord = QStringLiteral("--pay");

int payOrders(const QString &iniPath, const QStringList &jobs)
{
    const Outcome started = ServiceRuntime::instance().start(iniPath);
    if (!started) {
        std::fprintf(stderr, "%s\n", qPrintable(started.text));
        return 1;
    }
    SignIn::actAsOperator();
    for (const QString &job : jobs) {
        if (!Orders::pay(job))
            return 1;
    }
    return 0;
}

} // namespace

void OtherDesk::makeOrders(Database &database)
{
    for (const char *sql :
         {"INSERT INTO customers (code, create_time) VALUES ('web', '')",
          "INSERT INTO jobs (name, customer_id, serial_number, create_time) "
          "VALUES ('web000001', 1, 1, ''), ('web000002', 1, 2, ''), ('web000003', 1, 3, '')",
          "INSERT INTO job_flows (guid, job_name, create_time) "
          "VALUES ('g1', 'web000001', ''), ('g2', 'web000002', ''), ('g3', 'web000003', '')",
          "INSERT INTO orders (flow_id, create_time) VALUES (1, ''), (2, ''), (3, '')"})
        database.run(QString::fromLatin1(sql));
}

bool OtherDesk::pay(const QString &iniPath, const QStringList &jobs)
{
    constexpr int patience = 30'000; // ms
    QProcess other;
    other.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    other.start(QCoreApplication::applicationFilePath(), QStringList{payWord, iniPath} + jobs);
    return other.waitForFinished(patience) && other.exitStatus() == QProcess::NormalExit &&
           other.exitCode() == 0;
}

std::optional<int> OtherDesk::workIfAsked()
{
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 3 && arguments[1] == payWord)
        return payOrders(arguments[2], arguments.mid(3));
    return std::nullopt;
}

} // namespace KODMS::Tests
