// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/SqlError.h"

#include <QCoreApplication>

namespace KODMS::Services {

SqlError::SqlError(Kind kind, const QString &statement, const QString &driverText,
                   const QString &said)
    : m_kind(kind), m_statement(statement), m_driverText(driverText.simplified()), m_said(said),
      m_what(logText().toUtf8())
{
}

QString SqlError::userText() const
{
    const auto tr = [](const char *text) { return QCoreApplication::translate("SqlError", text); };
    if (!m_said.isEmpty())
        return m_said;
    switch (m_kind) {
    case Kind::Busy:
        return tr("数据库正被其他程序占用，请稍后再试");
    case Kind::Constraint:
        return tr("数据不符合要求，未保存");
    case Kind::Full:
        return tr("磁盘已满，未保存");
    case Kind::ReadOnly:
        return tr("数据库为只读，无法保存");
    case Kind::Corrupt:
        return tr("数据库文件已损坏或不是数据库，请从备份恢复");
    case Kind::Lost:
        return tr("无法连接数据库");
    case Kind::Refused:
        return tr("数据库服务器不接受这个账户或它的密码");
    case Kind::Missing:
        return tr("服务器上没有这个数据库");
    case Kind::Unfit:
        return tr("数据库或它的设置不能使用");
    case Kind::Forbidden:
        return tr("数据库的账户没有这样做的权限");
    case Kind::Timeout:
        return tr("查询超时，已中止");
    case Kind::Unsure:
        return tr("保存时与数据库的连接中断，可能已经保存，请先查看再决定是否重做");
    case Kind::Other:
        break;
    }
    return tr("数据库操作失败");
}

QString SqlError::detailedText() const
{
    if (!m_said.isEmpty() || m_driverText.isEmpty())
        return userText();
    return QCoreApplication::translate("SqlError", "%1（%2）").arg(userText(), m_driverText);
}

QString SqlError::logText() const
{
    constexpr int longest = 2000; // a generated statement can be very long
    const QString statement = m_statement.simplified();
    if (statement.isEmpty())
        return m_driverText;
    return m_driverText + QStringLiteral(" in: ") + statement.left(longest);
}

} // namespace KODMS::Services
