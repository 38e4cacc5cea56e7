// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/AdminChange.h"

#include "services/notices/NoticeHub.h"
#include "services/records/RecordContext.h"
#include "services/records/Transaction.h"
#include "services/records/bll/Audit.h"
#include "services/records/bll/UserRecords.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("UserAdmin", text);
}

/// The operator has no account; nobody has not even the role.
bool isActiveAdmin(RecordContext &context)
{
    if (context.actor().userId == 0)
        return context.actor().roles.has(Role::Admin);
    const auto user = UserRecords(context.database()).byId(context.actor().userId);
    return user && !user->disabled && user->roles.has(Role::Admin);
}

} // namespace

Outcome AdminChange::mayAct(const char *action, const QString &record)
{
    RecordContext &context = *RecordContext::current();
    const int userId = context.actor().userId;
    if (isActiveAdmin(context))
        return Outcome::success();
    const QString cause = QStringLiteral("user %1 is no administrator").arg(userId);
    writeAudit(context.database(),
               {userId, QString::fromLatin1(action), QString(), 0, record, QString(), cause, true});
    reportRefusal(action, record, cause, tr("您没有该权限"));
    return Outcome::failure(tr("您没有该权限"));
}

Outcome AdminChange::run(const char *action, const QString &record,
                         const std::function<Outcome(AdminChange &)> &body)
{
    RecordContext *context = RecordContext::current();
    if (!context)
        return Outcome::failure(tr("服务尚未启动"));
    try {
        const Outcome allowed = mayAct(action, record);
        if (!allowed)
            return allowed;
        Transaction transaction(context->database());
        AdminChange change(context->database(), action, context->actor().userId);
        const Outcome outcome = body(change);
        if (outcome)
            transaction.commit();
        return outcome;
    } catch (const SqlError &error) {
        qCWarning(lcRecords).noquote()
            << action << QStringLiteral("[%1]").arg(record) << error.logText();
        return Outcome::failure(error.userText());
    }
}

void AdminChange::audit(const QString &kind, int id, const QString &name, const QString &before,
                        const QString &after)
{
    writeAudit(m_database,
               {m_userId, QString::fromLatin1(m_action), kind, id, name, before, after, false});
}

} // namespace KODMS::Services
