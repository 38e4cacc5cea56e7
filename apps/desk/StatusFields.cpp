// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/StatusFields.h"

#include "apps/desk/ElidedLabel.h"
#include "apps/desk/Icons.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/PlainText.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

#include <QHash>
#include <QLabel>
#include <QStatusBar>
#include <QToolButton>

namespace KODMS::Host {

namespace {

QString joinedRoles(const QStringList &roles)
{
    QStringList texts;
    for (const QString &role : roles)
        texts << StatusFields::roleText(role);
    return texts.isEmpty() ? StatusFields::tr("普通用户")
                           : texts.join(StatusFields::tr("、", "between the names of roles"));
}

} // namespace

StatusFields::StatusFields(QStatusBar &bar, NoticeLog &log) : QObject(&bar), m_log(log)
{
    m_icon = new QLabel(&bar);
    m_icon->setContentsMargins(6, 0, 0, 0);
    m_latest = new ElidedLabel(&bar);
    m_latest->setObjectName(QStringLiteral("latestNotice"));
    m_count = new QToolButton(&bar);
    m_count->setObjectName(QStringLiteral("noticeCount"));
    m_count->setAutoRaise(true);
    m_count->setToolTip(tr("打开通知列表 (F8)"));
    auto *database =
        new ElidedLabel(&bar, Services::ServiceRuntime::instance().databaseText(), Qt::ElideMiddle);
    database->setObjectName(QStringLiteral("databaseField"));
    database->setMaximumWidth(400);
    bar.addWidget(m_icon);
    bar.addWidget(m_latest, 1);
    bar.addPermanentWidget(m_count);
    bar.addPermanentWidget(makeUserLabel(bar));
    bar.addPermanentWidget(database);
    connect(m_count, &QToolButton::clicked, this, &StatusFields::noticesRequested);
    connect(m_latest, &ElidedLabel::clicked, this, &StatusFields::noticesRequested);
    connect(&m_log, &NoticeLog::latestChanged, this, &StatusFields::showLatest);
    connect(&m_log, &NoticeLog::unreadChanged, this, &StatusFields::showUnread);
    showLatest();
    showUnread(m_log.unread());
}

QLabel *StatusFields::makeUserLabel(QStatusBar &bar) const
{
    const Services::SignedInUser user = Services::SignIn::current();
    const QString roles = joinedRoles(user.roles);
    auto *label = new ElidedLabel(&bar, tr("%1 · %2").arg(user.realName, roles), Qt::ElideRight);
    label->setObjectName(QStringLiteral("userField"));
    label->setMaximumWidth(360);
    label->setToolTip(plainToolTip(tr("登录名：%1\n角色：%2").arg(user.loginName, roles)));
    return label;
}

QString StatusFields::roleText(const QString &role)
{
    static const QHash<QString, const char *> texts{
        {QStringLiteral("admin"), QT_TR_NOOP("管理员")},
        {QStringLiteral("pre-process"), QT_TR_NOOP("前处理")},
        {QStringLiteral("pre-check-assign"), QT_TR_NOOP("审核指派")},
        {QStringLiteral("test-admin"), QT_TR_NOOP("测试管理员")},
        {QStringLiteral("check-authority"), QT_TR_NOOP("审核")},
        {QStringLiteral("orig-file-update"), QT_TR_NOOP("原始文件更新")},
        {QStringLiteral("orig-file-assign"), QT_TR_NOOP("原始文件指派")},
        {QStringLiteral("show-company-name"), QT_TR_NOOP("显示客户名称")},
        {QStringLiteral("robot"), QT_TR_NOOP("机器人")}};
    const char *text = texts.value(role, nullptr);
    return text ? tr(text) : role;
}

void StatusFields::showLatest()
{
    const NoticeLog::Notice latest = m_log.latest();
    const bool some = !latest.text.isEmpty();
    m_icon->setVisible(some);
    m_icon->setPixmap(some ? Icons::notice(latest.level).pixmap(16, 16) : QPixmap());
    m_latest->setFullText(latest.text);
}

void StatusFields::showUnread(int unread)
{
    m_count->setText(unread > 0 ? tr("通知 (%1)").arg(unread) : tr("通知"));
    m_count->setProperty("unread", unread > 0);
}

} // namespace KODMS::Host
