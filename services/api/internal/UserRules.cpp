// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/UserRules.h"

#include "services/session/PasswordHash.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

namespace KODMS::Services {

namespace {

constexpr int LongestRealName = 64;
constexpr int ShortestPassword = 8;
constexpr int LongestPassword = 256;

QString tr(const char *text)
{
    return QCoreApplication::translate("UserAdmin", text);
}

} // namespace

Outcome UserRules::checkLoginName(const QString &loginName)
{
    static const QRegularExpression form(QStringLiteral("\\A[a-z0-9][a-z0-9._-]{0,31}\\z"));
    if (form.match(loginName).hasMatch())
        return Outcome::success();
    return Outcome::failure(
        tr("登录名“%1”无效：应为 1 到 32 个小写字母、数字或 . _ -，以字母或数字开头")
            .arg(loginName.left(LongestRealName)));
}

Outcome UserRules::checkRealName(const QString &realName)
{
    const bool isPrintable = std::all_of(realName.begin(), realName.end(), [](QChar character) {
        return character.isPrint() || character.isSurrogate();
    });
    if (!realName.trimmed().isEmpty() && realName.trimmed() == realName && isPrintable &&
        realName.size() <= LongestRealName)
        return Outcome::success();
    return Outcome::failure(
        tr("姓名无效：应为 1 到 %1 个可见字符，首尾没有空格").arg(LongestRealName));
}

Outcome UserRules::checkPassword(const QString &password)
{
    if (password.size() >= ShortestPassword && password.size() <= LongestPassword)
        return Outcome::success();
    return Outcome::failure(
        tr("密码长度应为 %1 到 %2 个字符").arg(ShortestPassword).arg(LongestPassword));
}

Outcome UserRules::checkNames(const NewUser &user)
{
    for (const Outcome &outcome : {checkLoginName(user.loginName), checkRealName(user.realName)}) {
        if (!outcome)
            return outcome;
    }
    for (const QString &name : user.roles) {
        if (!roleFromName(name))
            return Outcome::failure(tr("没有名为“%1”的角色").arg(name));
    }
    return Outcome::success();
}

Result<UserRow> UserRules::rowFor(const NewUser &user)
{
    for (const Outcome &outcome : {checkNames(user), checkPassword(user.password)}) {
        if (!outcome)
            return outcome;
    }
    UserRow row;
    for (const QString &name : user.roles)
        row.roles.insert(*roleFromName(name));
    row.loginName = user.loginName;
    row.realName = user.realName;
    row.department = user.department;
    row.post = user.post;
    row.passwordHash = PasswordHash::make(user.password);
    if (row.passwordHash.isEmpty())
        return Outcome::failure(tr("内存不足，无法生成密码"));
    return row;
}

} // namespace KODMS::Services
