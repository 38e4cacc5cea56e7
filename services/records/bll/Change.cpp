// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/Change.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/RecordContext.h"
#include "services/records/StoredFiles.h"
#include "services/records/TimeText.h"
#include "services/records/bll/Audit.h"
#include "services/records/bll/FlowScope.h"
#include "services/records/bll/TextArgument.h"
#include "services/records/bll/UserRecords.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

const QString flowKind = QStringLiteral("flow");

/// Actions of the audit begin with the group that they write.
QString prefixOf(FieldGroup group)
{
    switch (group) {
    case FieldGroup::State:
        return QStringLiteral("state.");
    case FieldGroup::File:
        return QStringLiteral("file.");
    case FieldGroup::Assignment:
        return QStringLiteral("assignment.");
    case FieldGroup::Remark:
        break;
    }
    return QStringLiteral("remark.");
}

QString titleOf(FieldGroup group)
{
    switch (group) {
    case FieldGroup::State:
        return tr("状态");
    case FieldGroup::File:
        return tr("文件");
    case FieldGroup::Assignment:
        return tr("指派");
    case FieldGroup::Remark:
        break;
    }
    return tr("备注");
}

int versionOf(const RowVersions &versions, FieldGroup group)
{
    switch (group) {
    case FieldGroup::State:
        return versions.state;
    case FieldGroup::File:
        return versions.file;
    case FieldGroup::Assignment:
        return versions.assignment;
    case FieldGroup::Remark:
        break;
    }
    return versions.remark;
}

} // namespace

Change::Change(RecordContext &context, const Operation &operation, const QString &record)
    : m_context(context), m_operation(operation), m_actor(context.actor()), m_recordName(record)
{
}

bool Change::run(const Operation &operation, const std::string &record, const Body &body)
{
    return outcomeOf(operation, record, body).ok;
}

Outcome Change::outcomeOf(const Operation &operation, const std::string &record, const Body &body)
{
    return outcomeAs(Transaction::Purpose::Write, operation, record, body);
}

bool Change::look(const Operation &operation, const std::string &record, const Body &body)
{
    return outcomeOfLook(operation, record, body).ok;
}

Outcome Change::outcomeOfLook(const Operation &operation, const std::string &record,
                              const Body &body)
{
    return outcomeAs(Transaction::Purpose::Read, operation, record, body);
}

Outcome Change::outcomeAs(Transaction::Purpose purpose, const Operation &operation,
                          const std::string &record, const Body &body)
{
    const QString name = shortText(record);
    RecordContext *context = RecordContext::current();
    if (!context) {
        const Outcome closed =
            Outcome::failure(tr("没有打开的数据库"), QStringLiteral("no database is open"));
        reportFailure(lcRecords(), operation.action, name, closed.cause, closed.text);
        return closed;
    }
    Change change(*context, operation, name);
    return change.runSafely(purpose, body);
}

Outcome Change::runSafely(Transaction::Purpose purpose, const Body &body)
{
    try {
        perform(purpose, body);
    } catch (const ChangeStopped &why) {
        return stopped(why);
    } catch (const SqlError &error) {
        return reportFailed(error.logText(), error.userText());
    } catch (const std::exception &error) {
        return reportFailed(QString::fromUtf8(error.what()), tr("内部错误，未保存"));
    }
    for (const auto &step : m_afterwards)
        follow(step);
    return Outcome::success();
}

/// The change is on the disk and stays, whatever becomes of what follows it.
void Change::follow(const std::function<void()> &step) const
{
    try {
        step();
    } catch (const std::exception &error) {
        // The change itself is a success; this is only said.
        const Outcome said =
            reportFailed(QStringLiteral("after the change: ") + QString::fromUtf8(error.what()),
                         tr("已保存，但后续处理失败"));
        Q_UNUSED(said)
    }
}

void Change::perform(Transaction::Purpose purpose, const Body &body)
{
    Transaction transaction(m_context.database(), purpose);
    loadActor();
    body(*this);
    transaction.commit();
}

void Change::loadActor()
{
    if (m_actor.userId == 0)
        refuse(QStringLiteral("nobody is signed in"), tr("请先登录"));
    const auto user = UserRecords(m_context.database()).byId(m_actor.userId);
    if (!user || user->disabled)
        refuse(QStringLiteral("the account is disabled"), tr("该账号已停用"));
    m_actor = user->actor();
}

Outcome Change::stopped(const ChangeStopped &why)
{
    if (why.kind() == ChangeStopped::Kind::Failed)
        return reportFailed(why.cause(), why.userText());
    const QString cause = why.cause() + auditRefusal(why.cause());
    reportRefusal(m_operation.action, m_recordName, cause, noticeText(why.userText()));
    return Outcome::failure(why.userText(), why.cause());
}

/// What went wrong with the audit row itself, to stand in the same log line.
QString Change::auditRefusal(const QString &cause)
{
    try {
        writeAudit(m_context.database(),
                   {m_actor.userId, QString::fromLatin1(m_operation.action), m_recordKind,
                    m_recordId, m_recordName, QString(), cause, true});
        return {};
    } catch (const std::exception &error) {
        return QStringLiteral("; the refusal could not be audited: ") +
               QString::fromUtf8(error.what());
    }
}

Outcome Change::reportFailed(const QString &cause, const QString &userText) const
{
    reportFailure(lcRecords(), m_operation.action, m_recordName, cause, noticeText(userText));
    return Outcome::failure(userText, cause);
}

/// Before the record was found, or when it cannot be, it is called what the session was shown.
QString Change::noticeText(const QString &userText) const
{
    if (m_recordName.isEmpty())
        return tr("%1：%2").arg(tr(m_operation.title), userText);
    const SessionMemory *known = memory();
    const QString name = known != nullptr ? known->nameOf(m_recordName) : m_recordName;
    return tr("%1（%2）：%3").arg(tr(m_operation.title), name, userText);
}

Database &Change::database()
{
    return m_context.database();
}

StoredFiles &Change::storedFiles()
{
    StoredFiles *files = m_context.storedFiles();
    if (!files)
        fail(QStringLiteral("no file store is open"), tr("没有打开的文件库"));
    return *files;
}

bool Change::isStored(const QString &storedName)
{
    const auto answer = storedFiles().has(storedName);
    if (!answer)
        fail(answer.outcome.cause, answer.text());
    return answer.value;
}

SessionMemory *Change::memory() const
{
    return dynamic_cast<SessionMemory *>(m_context.shownRecords());
}

void Change::actsAs(int userId) const
{
    if (userId != m_actor.userId)
        refuse(QStringLiteral("user %1 is not the one who is signed in (%2)")
                   .arg(userId)
                   .arg(m_actor.userId),
               tr("操作人不是当前登录的用户"));
}

void Change::needs(Right right) const
{
    if (!carriesRight(m_actor.roles, right))
        refuse(QStringLiteral("user %1 has no right to this").arg(m_actor.userId),
               tr("您没有该权限"));
}

void Change::needs(Right right, const FlowRow &flow)
{
    if (carriesRight(m_actor.roles, right) || (isRightInScope(right) && isInScope(flow)))
        return;
    refuse(QStringLiteral("the flow is not in the scope of user %1").arg(m_actor.userId),
           tr("该料号不在您的范围内"));
}

bool Change::isInScope(const FlowRow &flow)
{
    return isFlowInScope(database(), m_actor, flow.id);
}

FlowVisitor Change::visitor(const FlowRow &flow)
{
    return {m_actor.roles, isInScope(flow), flow.executorId == m_actor.userId};
}

FlowFacts Change::facts(const FlowRow &flow)
{
    const bool isKos = flow.importType.compare(QLatin1String("kos"), Qt::CaseInsensitive) == 0;
    return {flow.state, isKos && isStored(flow.importStoredName), flow.resultFileId != 0};
}

FlowRow Change::flowByGuid(const std::string &guid)
{
    return found(FlowRecords(database()).byGuid(text(guid, LongestName)));
}

FlowRow Change::flowById(int id)
{
    return found(FlowRecords(database()).byId(id));
}

FlowRow Change::flowByJobName(const std::string &jobName)
{
    return found(FlowRecords(database()).byJobName(text(jobName, LongestName)));
}

FlowRow Change::found(const std::optional<FlowRow> &flow)
{
    if (!flow)
        fail(QStringLiteral("there is no such flow"), tr("找不到该料号的流程"));
    isAbout(flowKind, flow->id, flow->jobName);
    return *flow;
}

void Change::isAbout(const QString &kind, int id, const QString &name)
{
    m_recordKind = kind;
    m_recordId = id;
    m_recordName = name;
}

void Change::needsUnchanged(const FlowRow &flow, FieldGroup group)
{
    const SessionMemory *known = memory();
    if (!known)
        return;
    const auto shown = known->lastShown(flow.id, group);
    if (!shown || *shown == versionOf(flow.versions, group))
        return;
    refuse(QStringLiteral("%1version %2 was shown, it is %3 now")
               .arg(prefixOf(group))
               .arg(*shown)
               .arg(versionOf(flow.versions, group)),
           lastChangeText(flow, group));
}

QString Change::lastChangeText(const FlowRow &flow, FieldGroup group)
{
    SqlQuery query = database().query("select_last_event_of_flow");
    query.bind(":flow", flow.id).bind(":prefix", prefixOf(group)).exec();
    if (!query.next())
        return tr("%1已被他人更改，请刷新后再试").arg(titleOf(group));
    constexpr int longest = 60;
    return tr("%1 于 %2 更改了%3：%4。请刷新后再试")
        .arg(query.text("real_name"), shownTime(query.text("create_time")), titleOf(group),
             query.text("after_value").left(longest));
}

void Change::wrote(const FlowRow &flow, FieldGroup group)
{
    SessionMemory *known = memory();
    if (!known)
        return;
    const int version = versionOf(flow.versions, group) + 1;
    afterwards([known, id = flow.id, group, version] { known->wrote(id, group, version); });
}

QString Change::text(const std::string &bytes, int longest)
{
    const TextArgument argument(bytes, longest);
    if (!argument.isValid())
        fail(argument.cause(), argument.userText());
    return argument.text();
}

void Change::audit(const QString &before, const QString &after)
{
    writeAudit(database(), {m_actor.userId, QString::fromLatin1(m_operation.action), m_recordKind,
                            m_recordId, m_recordName, before, after, false});
}

void Change::refuse(const QString &cause, const QString &userText)
{
    throw ChangeStopped(ChangeStopped::Kind::Refused, cause, userText);
}

void Change::fail(const QString &cause, const QString &userText)
{
    throw ChangeStopped(ChangeStopped::Kind::Failed, cause, userText);
}

} // namespace KODMS::Services
