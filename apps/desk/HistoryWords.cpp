// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HistoryWords.h"

#include "foundation/status/FlowStatus.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QHash>

namespace KODMS::Host {

namespace {

using Services::HistoryEntry;

QString tr(const char *text)
{
    return QCoreApplication::translate("HistoryWords", text);
}

/// Operations that are told apart; the others are called by their group.
const char *operationWord(const QString &action)
{
    static const QHash<QString, const char *> words{
        {QStringLiteral("intake.take"), QT_TRANSLATE_NOOP("HistoryWords", "接收客户文件")},
        {QStringLiteral("order.pay"), QT_TRANSLATE_NOOP("HistoryWords", "订单付款")},
        {QStringLiteral("assignment.AssignOrigFile"),
         QT_TRANSLATE_NOOP("HistoryWords", "指派前处理人")},
        {QStringLiteral("assignment.AssignOrigFileUpdate"),
         QT_TRANSLATE_NOOP("HistoryWords", "重新指派前处理人")},
        {QStringLiteral("assignment.s_PreCheckAssign"),
         QT_TRANSLATE_NOOP("HistoryWords", "指派审核人")},
        {QStringLiteral("assignment.Update_PreCheckAssign"),
         QT_TRANSLATE_NOOP("HistoryWords", "重新指派审核人")},
        {QStringLiteral("state.UpdateState"), QT_TRANSLATE_NOOP("HistoryWords", "更改状态")},
        {QStringLiteral("state.UpdateCheckFlag"),
         QT_TRANSLATE_NOOP("HistoryWords", "保存审核结果")},
        {QStringLiteral("state.UpdatePreImportOrCheckTime"),
         QT_TRANSLATE_NOOP("HistoryWords", "记录时间")},
        {QStringLiteral("state.kodms_update_flow_status"),
         QT_TRANSLATE_NOOP("HistoryWords", "完成流程")},
        {QStringLiteral("state.importJob"), QT_TRANSLATE_NOOP("HistoryWords", "导入料号")},
        {QStringLiteral("file.importJob"), QT_TRANSLATE_NOOP("HistoryWords", "保存导入的料号")},
        {QStringLiteral("file.importResult"), QT_TRANSLATE_NOOP("HistoryWords", "导入机器人结果")},
        {QStringLiteral("state.robotTake"), QT_TRANSLATE_NOOP("HistoryWords", "机器人接收料号")},
        {QStringLiteral("state.robotResult"), QT_TRANSLATE_NOOP("HistoryWords", "机器人交付结果")},
        {QStringLiteral("remark.UpdateTips"), QT_TRANSLATE_NOOP("HistoryWords", "修改备注")},
        {QStringLiteral("file.fetch"), QT_TRANSLATE_NOOP("HistoryWords", "取文件")},
        {QStringLiteral("file.DelOrigFile"), QT_TRANSLATE_NOOP("HistoryWords", "删除原始文件")},
        {QStringLiteral("file.UpdateOrigFileGuid"),
         QT_TRANSLATE_NOOP("HistoryWords", "更换原始文件")},
        {QStringLiteral("file.UpdateZipUUID_OrigName"),
         QT_TRANSLATE_NOOP("HistoryWords", "更改原始料名")},
        {QStringLiteral("file.UpdateLastOdbppImportMongoFsGuid"),
         QT_TRANSLATE_NOOP("HistoryWords", "更换导入文件")},
        {QStringLiteral("question.raise"), QT_TRANSLATE_NOOP("HistoryWords", "创建问题")},
        {QStringLiteral("question.read"), QT_TRANSLATE_NOOP("HistoryWords", "查看问题")},
        {QStringLiteral("question.answer"), QT_TRANSLATE_NOOP("HistoryWords", "回复问题")},
        {QStringLiteral("question.UpdateQuestionStatus"),
         QT_TRANSLATE_NOOP("HistoryWords", "更改问题状态")},
        {QStringLiteral("history.read"), QT_TRANSLATE_NOOP("HistoryWords", "查看历史")}};
    return words.value(action, nullptr);
}

const char *groupWord(const QString &group)
{
    static const QHash<QString, const char *> words{
        {QStringLiteral("state"), QT_TRANSLATE_NOOP("HistoryWords", "状态")},
        {QStringLiteral("file"), QT_TRANSLATE_NOOP("HistoryWords", "文件")},
        {QStringLiteral("assignment"), QT_TRANSLATE_NOOP("HistoryWords", "指派")},
        {QStringLiteral("remark"), QT_TRANSLATE_NOOP("HistoryWords", "备注")},
        {QStringLiteral("question"), QT_TRANSLATE_NOOP("HistoryWords", "问题")},
        {QStringLiteral("order"), QT_TRANSLATE_NOOP("HistoryWords", "订单")}};
    return words.value(group, nullptr);
}

/// "1,2" as the desks call it; any other text as it stands.
QString statusWord(const QString &value)
{
    const QStringList parts = value.split(QLatin1Char(','));
    bool isStatus = false;
    bool isFlag = false;
    const int status = parts.value(0).toInt(&isStatus);
    const int flag = parts.value(1).toInt(&isFlag);
    if (parts.size() != 2 || !isStatus || !isFlag)
        return value;
    return UI::flowStatusText(status, flag).section(QLatin1Char('|'), 0, 0);
}

QString verdictWord(const QString &value)
{
    const QString flag = value.section(QLatin1Char(','), 1, 1);
    if (flag == QLatin1String("1"))
        return tr("不通过");
    if (flag == QLatin1String("2"))
        return tr("通过");
    return flag == QLatin1String("0") ? tr("未审核") : value;
}

QString paymentWord(const QString &value)
{
    if (value == QLatin1String("paid"))
        return tr("已付款");
    return value == QLatin1String("unpaid") ? tr("未付款") : value;
}

/// The person is told by the entry itself, and the time as clocks here show it.
QString stampWord(const QString &value)
{
    const QString stamp = value.section(QLatin1Char(' '), 1);
    const QDateTime time = QDateTime::fromString(stamp, Qt::ISODateWithMs);
    return time.isValid() ? time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
                          : stamp;
}

/// What a question began with; its job, on the first line, is the one that is looked at.
QString raisedWord(const QString &value)
{
    return value.section(QLatin1Char('\n'), 1);
}

QString questionWord(const QString &value)
{
    bool isFlag = false;
    const int flag = value.toInt(&isFlag);
    return isFlag ? UI::questionCheckText(flag).text : value;
}

QString valueWord(const HistoryEntry &entry, const QString &value)
{
    if (value.isEmpty())
        return value;
    if (entry.action == QLatin1String("state.UpdateCheckFlag"))
        return verdictWord(value);
    if (entry.action == QLatin1String("state.UpdatePreImportOrCheckTime"))
        return stampWord(value);
    if (entry.action == QLatin1String("order.pay"))
        return paymentWord(value);
    if (entry.action == QLatin1String("question.raise"))
        return raisedWord(value);
    if (entry.action == QLatin1String("question.UpdateQuestionStatus"))
        return questionWord(value);
    return entry.action.startsWith(QLatin1String("state.")) ? statusWord(value) : value;
}

} // namespace

QString HistoryWords::who(const HistoryEntry &entry)
{
    return entry.who.isEmpty() ? tr("系统管理") : entry.who;
}

QString HistoryWords::action(const HistoryEntry &entry)
{
    const char *word = operationWord(entry.action);
    if (!word)
        word = groupWord(entry.action.section(QLatin1Char('.'), 0, 0));
    const QString text = word ? tr(word) : entry.action;
    return entry.isRefused ? tr("%1（被拒绝）").arg(text) : text;
}

QString HistoryWords::content(const HistoryEntry &entry)
{
    QString text = tr("没有执行");
    if (!entry.isRefused) {
        const QString before = valueWord(entry, entry.before);
        const QString after = valueWord(entry, entry.after);
        text = before.isEmpty() ? after : tr("%1 → %2").arg(before, after);
    }
    return entry.about.isEmpty() ? text : tr("“%1”：%2").arg(entry.about, text);
}

} // namespace KODMS::Host
