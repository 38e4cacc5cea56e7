// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/Authenticator.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/TimeText.h"
#include "services/records/Transaction.h"
#include "services/records/bll/Audit.h"
#include "services/records/bll/UserRecords.h"
#include "services/session/PasswordHash.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace KODMS::Services {

namespace {

constexpr int FreeTries = 5;
constexpr int FirstDelay = 10;        // seconds
constexpr int LongestDelay = 15 * 60; // seconds
constexpr int Memory = 24 * 60 * 60;  // seconds until failures are forgotten
constexpr int LongestLogin = 64;
/// So many that pushing one out by trying others takes a quarter of an hour.
constexpr int MostUnknownNames = 10000;

QString tr(const char *text)
{
    return QCoreApplication::translate("SignIn", text);
}

/// The name as it is counted: what was typed may be anything.
QString keyOf(const QString &loginName)
{
    QString key = loginName.left(LongestLogin).toLower();
    key.replace(QChar(0), QLatin1Char('?'));
    return key.isNull() ? QStringLiteral("") : key;
}

QDateTime timeOf(const QString &stored)
{
    return QDateTime::fromString(stored, Qt::ISODateWithMs);
}

/// Without memory for a new hash the old one stays: an empty one would lock the user out.
void renewHash(UserRecords &users, int userId, const QString &password)
{
    const QString hash = PasswordHash::make(password);
    if (!hash.isEmpty())
        users.setPasswordHash(userId, hash);
}

Outcome wrong()
{
    return Outcome::failure(tr("用户名或密码不正确"));
}

} // namespace

Authenticator::Authenticator(Database &database, Clock clock)
    : m_database(database), m_clock(std::move(clock))
{
}

int Authenticator::delayAfter(int failures)
{
    if (failures < FreeTries)
        return 0;
    const int doublings = std::min(failures - FreeTries, 10);
    return std::min(FirstDelay << doublings, LongestDelay);
}

Result<Actor> Authenticator::check(const QString &loginName, const QString &password)
{
    const QString key = keyOf(loginName);
    const int delay = remainingDelay(key);
    if (delay > 0)
        return Outcome::failure(tr("密码错误次数过多，请在 %1 秒后再试").arg(delay));
    const auto user = UserRecords(m_database).byLogin(key);
    const QString hash = user ? user->passwordHash : QString();
    if (!PasswordHash::matches(hash, password)) {
        countFailure(key, user.has_value());
        return wrong();
    }
    if (user->disabled) {
        qCInfo(lcSession).noquote() << "sign-in of a disabled account:" << user->loginName;
        return Outcome::failure(tr("该账号已停用，请联系管理员"));
    }
    return succeed(key, user->id, password);
}

int Authenticator::remainingDelay(const QString &key)
{
    SqlQuery query = m_database.query("select_sign_in_failures");
    query.bind(":login", key).exec();
    if (!query.next())
        return 0;
    const int delay = delayAfter(query.number("failures"));
    const qint64 passed = timeOf(query.text("last_time")).msecsTo(m_clock());
    if (passed < 0) // the clock was put back: never wait longer than from now
        return delay;
    const qint64 left = delay * qint64(1000) - passed;
    return left <= 0 ? 0 : static_cast<int>((left + 999) / 1000);
}

void Authenticator::countFailure(const QString &key, bool isKnown)
{
    // People type a password where the name belongs: what names nobody is written down nowhere
    // but in the count, which is forgotten after a day.
    const QString name = isKnown ? key : QStringLiteral("(unknown)");
    Transaction transaction(m_database);
    m_database.query("delete_old_sign_in_failures")
        .bind(":time", storedTime(m_clock().addSecs(-Memory)))
        .exec();
    m_database.query("count_sign_in_failure")
        .bind(":login", key)
        .bind(":time", storedTime(m_clock()))
        .exec();
    m_database.query("delete_excess_sign_in_failures").bind(":most", MostUnknownNames).exec();
    writeAudit(m_database, {0, QStringLiteral("session.SignIn"), QStringLiteral("login"), 0, name,
                            QString(), QStringLiteral("wrong name or password"), true});
    transaction.commit();
    qCInfo(lcSession).noquote() << "sign-in failed:" << name;
}

Actor Authenticator::succeed(const QString &key, int userId, const QString &password)
{
    Transaction transaction(m_database);
    UserRecords users(m_database);
    const UserRow user = users.byId(userId).value();
    m_database.query("delete_sign_in_failures").bind(":login", key).exec();
    if (PasswordHash::isOutdated(user.passwordHash))
        renewHash(users, userId, password);
    users.stampSignIn(userId);
    writeAudit(m_database, {userId, QStringLiteral("session.SignIn"), QStringLiteral("user"),
                            userId, user.loginName, QString(), QString(), false});
    transaction.commit();
    qCInfo(lcSession).noquote() << "signed in:" << user.loginName;
    return user.actor();
}

} // namespace KODMS::Services
