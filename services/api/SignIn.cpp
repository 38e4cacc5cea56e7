// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/SignIn.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/session/Authenticator.h"
#include "services/session/Runtime.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("SignIn", text);
}

} // namespace

Outcome SignIn::signIn(const QString &loginName, const QString &password)
{
    Runtime *runtime = Runtime::current();
    if (!runtime)
        return Outcome::failure(tr("服务尚未启动"));
    try {
        const auto actor = Authenticator(runtime->records().database()).check(loginName, password);
        if (!actor)
            return actor.outcome;
        runtime->setActor(actor.value);
    } catch (const SqlError &error) {
        qCWarning(lcSession).noquote() << "sign-in" << error.logText();
        return Outcome::failure(error.userText());
    }
    return Outcome::success();
}

void SignIn::signOut()
{
    if (Runtime *runtime = Runtime::current())
        runtime->setActor({});
}

void SignIn::actAsOperator()
{
    Actor actor;
    actor.loginName = QStringLiteral("kodms-admin");
    actor.roles = {Role::Admin};
    if (Runtime *runtime = Runtime::current())
        runtime->setActor(actor);
}

SignedInUser SignIn::current()
{
    Runtime *runtime = Runtime::current();
    if (!runtime)
        return {};
    const Actor &actor = runtime->records().actor();
    return {actor.userId,        actor.loginName,  actor.realName,
            actor.roles.names(), actor.department, actor.post};
}

} // namespace KODMS::Services
