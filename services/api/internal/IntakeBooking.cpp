// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/IntakeBooking.h"

#include "services/api/internal/IntakeFile.h"
#include "services/notices/OneLine.h"
#include "services/records/Database.h"
#include "services/records/Guid.h"
#include "services/records/TimeText.h"
#include "services/records/bll/Audit.h"
#include "services/records/bll/ChangeStopped.h"
#include "services/records/bll/Right.h"
#include "services/records/bll/StoredFileRecords.h"
#include "services/records/bll/TextArgument.h"
#include "services/records/bll/Transitions.h"
#include "services/records/bll/UserRecords.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace KODMS::Services {

namespace {

constexpr int LastSerial = 999999;
constexpr int SerialDigits = 6;
constexpr FlowState Arrived{0, 0};
constexpr FlowState ReadyForRobot{1, 2};

QString tr(const char *text)
{
    return QCoreApplication::translate("Intake", text);
}

[[noreturn]] void fail(const QString &cause, const QString &text)
{
    throw ChangeStopped(ChangeStopped::Kind::Failed, cause, text);
}

[[noreturn]] void refuse(const QString &cause, const QString &text)
{
    throw ChangeStopped(ChangeStopped::Kind::Refused, cause, text);
}

/// Each is shown in one cell of a table, and `name` says which is meant.
void requireText(const QString &name, const QString &value, int longest)
{
    const TextArgument argument(value.toStdString(), longest);
    if (!argument.isValid())
        fail(argument.cause(), tr("%1：%2").arg(name, argument.userText()));
    if (!isOneLine(value))
        fail(QStringLiteral("a text contains a control character"),
             tr("%1：含有换行或其他控制字符").arg(name));
}

/// The CAM product's own archive needs no pre-processing.
bool isReady(const IntakeFile &file)
{
    return file.type() == QLatin1String("kos");
}

} // namespace

struct IntakeBooking::Numbered {
    int customerId = 0;
    QString customerCode;
    int serial = 0;

    QString name() const
    {
        return customerCode + QStringLiteral("%1").arg(serial, SerialDigits, 10, QLatin1Char('0'));
    }
};

IntakeBooking::IntakeBooking(Database &database, const Actor &actor)
    : m_database(database), m_actor(actor), m_now(storedNow())
{
}

void IntakeBooking::requireRight()
{
    if (m_actor.userId != 0) {
        const auto user = UserRecords(m_database).byId(m_actor.userId);
        if (!user || user->disabled)
            refuse(QStringLiteral("the account is disabled"), tr("该账号已停用"));
        m_actor = user->actor();
    }
    if (!carriesRight(m_actor.roles, Right::ChangeFiles))
        refuse(QStringLiteral("user %1 has no right to this").arg(m_actor.userId),
               tr("您没有接收文件的权限"));
}

void IntakeBooking::requireGood(const IntakeRequest &request)
{
    static const QRegularExpression code(QStringLiteral("\\A[A-Za-z0-9]{3}\\z"));
    if (!code.match(request.customerCode).hasMatch())
        fail(QStringLiteral("not a customer code: %1").arg(request.customerCode.left(20)),
             tr("客户代码须为三位字母或数字：%1").arg(request.customerCode.left(20)));
    requireText(tr("客户名称"), request.customerName, LongestName);
    requireText(tr("原始料名"), request.origName, LongestName);
    requireText(tr("文件说明"), request.description, LongestName);
    requireText(tr("来源备注"), request.tips, LongestRemark);
}

IntakeReceipt IntakeBooking::book(const IntakeRequest &request, const IntakeFile &file)
{
    const Numbered job = numberedJob(request);
    m_database.query("insert_job")
        .bind(":name", job.name())
        .bind(":customer", job.customerId)
        .bind(":serial", job.serial)
        .bindId(":user", m_actor.userId)
        .bind(":time", m_now)
        .exec();
    IntakeReceipt receipt;
    receipt.jobName = job.name();
    receipt.flowGuid = newGuid();
    receipt.storedName = file.storedName();
    const int fileId = insertFile(job, file);
    receipt.flowId = insertFlow(job, file, fileId, receipt.flowGuid);
    insertRow(job, request, file, fileId, receipt.flowId);
    insertOrder(request, file, receipt.flowId);
    writeAudit(m_database, {m_actor.userId, QStringLiteral("intake.take"), QStringLiteral("flow"),
                            receipt.flowId, receipt.jobName, QString(), receipt.storedName, false});
    return receipt;
}

IntakeBooking::Numbered IntakeBooking::numberedJob(const IntakeRequest &request)
{
    Numbered job;
    job.customerId = customerId(request, job.customerCode);
    SqlQuery query = m_database.query("next_customer_serial");
    query.bind(":id", job.customerId).exec().next();
    job.serial = query.number("last_serial");
    if (job.serial > LastSerial)
        fail(QStringLiteral("no serial number left"),
             tr("客户 %1 的序号已用完").arg(job.customerCode));
    return job;
}

int IntakeBooking::customerId(const IntakeRequest &request, QString &code)
{
    SqlQuery known = m_database.query("select_customer_by_code");
    if (known.bind(":code", request.customerCode).exec().next()) {
        code = known.text("code");
        return known.number("id");
    }
    code = request.customerCode;
    SqlQuery insert = m_database.query("insert_customer");
    insert.bind(":code", code)
        .bind(":name", request.customerName.isEmpty() ? code : request.customerName)
        .bind(":time", m_now)
        .exec()
        .next();
    return insert.number("id");
}

int IntakeBooking::insertFile(const Numbered &job, const IntakeFile &file)
{
    StoredFileRow row;
    row.guid = newGuid();
    row.baseName = file.baseName();
    row.storedName = file.storedName();
    row.fileType = file.type();
    row.customerCode = job.customerCode;
    return StoredFileRecords(m_database).insert(row, 0, m_actor.userId);
}

int IntakeBooking::insertFlow(const Numbered &job, const IntakeFile &file, int fileId,
                              const QString &guid)
{
    const bool ready = isReady(file);
    const FlowState state = ready ? ReadyForRobot : Arrived;
    SqlQuery query = m_database.query("insert_flow");
    query.bind(":guid", guid).bind(":job", job.name()).bind(":file", fileId);
    query.bind(":status", state.status).bind(":flag", state.flag);
    query.bindId(":import_file", ready ? fileId : 0);
    query.bindId(":import_user", ready ? m_actor.userId : 0);
    query.bind(":import_time", ready ? QVariant(m_now) : QVariant());
    query.bindId(":user", m_actor.userId).bind(":time", m_now).exec().next();
    return query.number("id");
}

void IntakeBooking::insertRow(const Numbered &job, const IntakeRequest &request,
                              const IntakeFile &file, int fileId, int flowId)
{
    SqlQuery query = m_database.query("insert_compress");
    query.bind(":flow", flowId).bind(":customer", job.customerId).bind(":serial", job.serial);
    query.bind(":name", request.origName.isEmpty() ? file.baseName() : request.origName);
    query.bind(":description", request.description).bind(":tips", request.tips);
    query.bind(":file", fileId).bindId(":user", m_actor.userId);
    for (const char *time : {":flow_time", ":create_time", ":update_time"})
        query.bind(time, m_now);
    query.exec();
}

void IntakeBooking::insertOrder(const IntakeRequest &request, const IntakeFile &file, int flowId)
{
    m_database.query("insert_order")
        .bind(":flow", flowId)
        .bind(":payment", request.paid ? 1 : 0)
        .bind(":suffix", file.type())
        .bind(":pay_time", request.paid ? QVariant(m_now) : QVariant())
        .bind(":time", m_now)
        .exec();
}

} // namespace KODMS::Services
