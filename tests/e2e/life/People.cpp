// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/life/People.h"

namespace KODMS::Tests {

using Services::NewUser;

namespace {

NewUser person(const char *login, const QString &realName, const QStringList &roles)
{
    NewUser user;
    user.loginName = QString::fromLatin1(login);
    user.realName = realName;
    user.password = user.loginName + QStringLiteral(" knows it");
    user.department = 1;
    user.post = 1;
    user.roles = roles;
    return user;
}

} // namespace

NewUser People::keeper()
{
    return person("lin", QStringLiteral("林管理"), {QStringLiteral("admin")});
}

/// Sees every job, to have something to give away.
NewUser People::planner()
{
    return person("su", QStringLiteral("苏计划"),
                  {QStringLiteral("orig-file-assign"), QStringLiteral("pre-check-assign"),
                   QStringLiteral("test-admin")});
}

NewUser People::executor()
{
    NewUser user = person("zhou", QStringLiteral("周执行"), {QStringLiteral("pre-process")});
    user.department = 2;
    user.post = 6;
    return user;
}

NewUser People::reviewer()
{
    NewUser user = person("wu", QStringLiteral("吴审核"), {QStringLiteral("check-authority")});
    user.department = 3;
    user.post = 10;
    return user;
}

QVector<NewUser> People::all()
{
    return {keeper(), planner(), executor(), reviewer()};
}

} // namespace KODMS::Tests
