// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ListColumns.h"

#include "foundation/status/FlowStatus.h"

#include <algorithm>

namespace KODMS::Host {

namespace {

using Flow = DataLib::Model::Odbpp_Flow_View;
using File = DataLib::Model::Odbpp_OrigFile_View;

QString text(const std::string &utf8)
{
    return QString::fromStdString(utf8);
}

/// The column of one text of the record.
template <typename Record>
Services::ListColumn<Record> plain(const char *title, int width, std::string Record::*member)
{
    return {QString::fromUtf8(title), width, false,
            [member](const Record &record) { return text(record.*member); }};
}

QString status(const Flow &flow)
{
    return UI::flowStatusText(flow.flowStatus, flow.checkFlag).section(QLatin1Char('|'), 0, 0);
}

/// Files that came in through the web bear the name under which they are stored.
QString fileName(const File &file)
{
    constexpr int suffixLength = 4;
    if (file.koCode != "web")
        return text(file.origName);
    QString name = text(file.uuid);
    name.chop(suffixLength);
    return name;
}

QString fileType(const File &file)
{
    return file.fileType.empty() ? QStringLiteral("file") : text(file.fileType);
}

QString serial(const File &file)
{
    constexpr int digits = 6;
    return QStringLiteral("%1").arg(file.jobSerialNumber, digits, 10, QLatin1Char('0'));
}

QVector<Services::FlowColumn> allOfFlows()
{
    return {plain("料号名称", 14, &Flow::jobName),
            plain("原始料名", 30, &Flow::origJobName),
            {QStringLiteral("状态"), 14, false, status},
            plain("前处理审核时间", 20, &Flow::preCheckTime),
            plain("前处理人", 12, &Flow::preUserRealName),
            plain("前处理审核人", 14, &Flow::preCheckUserRealName),
            plain("料号管理备注", 40, &Flow::tips),
            {QStringLiteral("批号"), 8, true,
             [](const Flow &flow) { return QString::number(flow.batchNumber); }}};
}

QVector<Services::OrigFileColumn> allOfFiles()
{
    return {{QStringLiteral("原料号名"), 30, false, fileName},
            plain("客户简称", 16, &File::koName),
            plain("客户代号", 10, &File::koCode),
            {QStringLiteral("文件类型"), 10, false, fileType},
            {QStringLiteral("流水号"), 10, false, serial},
            plain("来源备注", 24, &File::fileTips),
            plain("客户二级", 16, &File::superiorCo1),
            plain("客户三级", 16, &File::superiorCo2),
            plain("更新时间", 20, &File::updateTime),
            plain("创建时间", 20, &File::createTime),
            plain("前处理人", 12, &File::preUserRealName)};
}

bool tellsCustomer(const QString &title)
{
    static const QStringList titles{QStringLiteral("客户简称"), QStringLiteral("客户二级"),
                                    QStringLiteral("客户三级")};
    return titles.contains(title);
}

/// Nothing when some title is of another table.
template <typename Column>
QVector<Column> inOrder(const QVector<Column> &all, const QStringList &titles)
{
    QVector<Column> chosen;
    for (const QString &title : titles) {
        const auto found = std::find_if(all.begin(), all.end(), [&title](const Column &column) {
            return column.title == title;
        });
        if (found == all.end())
            return {};
        chosen << *found;
    }
    return chosen;
}

} // namespace

QVector<Services::FlowColumn> ListColumns::flows(const QStringList &shown)
{
    const QVector<Services::FlowColumn> all = allOfFlows();
    const auto chosen = inOrder(all, shown);
    return chosen.isEmpty() ? all : chosen;
}

QVector<Services::OrigFileColumn> ListColumns::origFiles(const QStringList &shown)
{
    const QVector<Services::OrigFileColumn> all = allOfFiles();
    auto chosen = inOrder(all, shown);
    if (!chosen.isEmpty())
        return chosen;
    for (const auto &column : all) {
        if (!tellsCustomer(column.title))
            chosen << column;
    }
    return chosen;
}

} // namespace KODMS::Host
