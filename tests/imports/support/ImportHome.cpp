// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/imports/support/ImportHome.h"

#include "services/notices/Progress.h"
#include "tests/archive/SampleArchives.h"
#include "tests/odbpp/support/JobFiles.h"

namespace KODMS::Tests {

using namespace Services;

ImportHome::ImportHome(const QString &customer)
{
    house.actAsAdmin();
    const QString sent = house.path(QStringLiteral("sent.tgz"));
    writeFile(sent, tgzOf({{QStringLiteral("top.gbr"), "G04"}}));
    IntakeRequest request;
    request.path = sent;
    request.customerCode = customer;
    const auto receipt = Intake::take(request);
    if (!receipt)
        qFatal("%s", qPrintable(receipt.text()));
    job = receipt.value;
}

QString ImportHome::boardArchive(const QString &name)
{
    const QString path = house.path(name + QStringLiteral(".tgz"));
    if (!writeFile(path, tgzOf(boardFiles(name))))
        qFatal("cannot write");
    return path;
}

QString ImportHome::boardFolder(const QString &name)
{
    writeJob(house.path(QStringLiteral("folders")), boardFiles(name));
    return house.path(QStringLiteral("folders/") + name);
}

ReadJob ImportHome::readBoard(const QString &path)
{
    NoProgress progress;
    const auto read = ReadJob::at(path, LimitSettings(), progress);
    if (!read)
        qFatal("%s", qPrintable(read.text()));
    return read.value;
}

int ImportHome::actAsExecutor(const RoleSet &roles)
{
    const int user = house.actAs(QStringLiteral("executor"), roles);
    house.database()
        .prepare(QStringLiteral("INSERT INTO orig_file_assign (flow_id, executor_id, "
                                "assign_user_id, assign_time) VALUES (:flow, :user, :user, "
                                "'2026-01-01T00:00:00.000Z') ON CONFLICT (flow_id) DO UPDATE SET "
                                "executor_id = excluded.executor_id"))
        .bind(":flow", job.flowId)
        .bind(":user", user)
        .exec();
    return user;
}

void ImportHome::setState(int status, int flag)
{
    house.database().run(QStringLiteral("UPDATE job_flows SET flow_status = %1, check_flag = %2")
                             .arg(status)
                             .arg(flag));
}

QString ImportHome::flowValue(const QString &column)
{
    return house
        .value(QStringLiteral("SELECT %1 FROM job_flows WHERE id = %2").arg(column).arg(job.flowId))
        .toString();
}

QString ImportHome::summary()
{
    const auto ofJob = [this](const char *column) {
        return house
            .value(QStringLiteral("SELECT %1 FROM jobs WHERE name = '%2'")
                       .arg(QLatin1String(column), job.jobName))
            .toString();
    };
    return QStringLiteral("%1,%2 [%3] %4 layers %5 features by %6")
        .arg(flowValue(QStringLiteral("flow_status")), flowValue(QStringLiteral("check_flag")),
             flowValue(QStringLiteral("orig_job_name")), ofJob("layer_count"),
             ofJob("feature_count"),
             house
                 .value(QStringLiteral("SELECT login_name FROM users JOIN job_flows ON "
                                       "users.id = last_import_user_id WHERE job_flows.id = %1")
                            .arg(job.flowId))
                 .toString());
}

QString ImportHome::stock()
{
    return QStringLiteral("%1 records, %2 files, %3 in staging, %4")
        .arg(house.value(QStringLiteral("SELECT count(*) FROM orig_files")).toString())
        .arg(house.store().list().value.size())
        .arg(TestInstallation::entries(house.staging()).size())
        .arg(summary());
}

} // namespace KODMS::Tests
