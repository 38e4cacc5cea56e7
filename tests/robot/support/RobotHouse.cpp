// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/robot/support/RobotHouse.h"

#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "services/api/SignIn.h"
#include "services/api/StoreCheck.h"
#include "services/api/UserAdmin.h"
#include "services/api/internal/SampleArchive.h"
#include "services/archive/Unpacker.h"
#include "tests/archive/SampleArchives.h"

#include <QTemporaryDir>

namespace KODMS::Tests {

using namespace Services;

namespace {

const QString password = QStringLiteral("a robot's password");

void must(const Outcome &outcome)
{
    if (!outcome)
        qFatal("%s", qPrintable(outcome.text));
}

} // namespace

RobotHouse::RobotHouse() : m_kos(m_installation.path(QStringLiteral("board.kos")))
{
    addAccount(QString::fromLatin1(Login), {QStringLiteral("robot")});
    must(SampleArchive::write(m_kos, QStringLiteral("board")));
    if (!writeFile(passwordFile(), password.toUtf8() + '\n'))
        qFatal("the password file cannot be written");
}

void RobotHouse::addAccount(const QString &login, const QStringList &roles)
{
    SignIn::actAsOperator();
    NewUser user;
    user.loginName = login;
    user.realName = login;
    user.password = password;
    user.roles = roles;
    must(UserAdmin::add(user).outcome);
}

IntakeReceipt RobotHouse::addJob(const QString &customerCode, bool paid)
{
    m_installation.actAsAdmin();
    IntakeRequest request;
    request.path = m_kos;
    request.customerCode = customerCode;
    request.paid = paid;
    NoProgress progress;
    const auto receipt = Intake::take(request, &progress);
    must(receipt.outcome);
    return receipt.value;
}

void RobotHouse::setState(const QString &jobName, FlowState state)
{
    SqlQuery query = m_installation.database().prepare(
        QStringLiteral("UPDATE job_flows SET flow_status = ?, check_flag = ? WHERE job_name = ?"));
    query.bind(0, state.status).bind(1, state.flag).bind(2, jobName).exec();
}

FlowRow RobotHouse::flow(const QString &jobName)
{
    return FlowRecords(m_installation.database()).byJobName(jobName).value();
}

bool RobotHouse::review(const QString &jobName, int flag)
{
    const int user = m_installation.actAs(QStringLiteral("reviewer"), {Role::CheckAuthority});
    return DataLib::BLL::Odbpp_JobFlowBll().UpdateState(user, 2, flag,
                                                        flow(jobName).guid.toStdString());
}

QMap<QString, QByteArray> RobotHouse::resultOf(const QString &jobName)
{
    const QTemporaryDir place;
    const QString zip = place.filePath(QStringLiteral("result"));
    const QString name =
        m_installation
            .value(QStringLiteral("SELECT stored_name FROM orig_files WHERE kind = 2 AND id = %1")
                       .arg(flow(jobName).resultFileId))
            .toString();
    NoProgress progress;
    must(m_installation.store().get(name, zip, progress));
    const QString folder = place.filePath(QStringLiteral("unpacked"));
    must(unpackArchive(zip, folder, {}, progress).outcome);
    return treeOf(folder);
}

bool RobotHouse::agrees()
{
    SignIn::actAsOperator();
    const auto report = StoreCheck::check({});
    must(report.outcome);
    for (const CheckFinding &finding : report.value.findings)
        qInfo("%s", qPrintable(finding.text));
    return report.value.isClean();
}

bool RobotHouse::isClean()
{
    return agrees() && TestInstallation::entries(m_installation.staging()).isEmpty();
}

void RobotHouse::repair()
{
    SignIn::actAsOperator();
    CheckOptions options;
    options.repair = true;
    must(StoreCheck::check(options).outcome);
}

} // namespace KODMS::Tests
