// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/FlowRow.h"

#include "foundation/status/FlowStatus.h"

namespace KODMS::UI {

namespace {

QString text(const std::string &utf8)
{
    return QString::fromStdString(utf8);
}

} // namespace

QStringList flowHeaders()
{
    return {QStringLiteral("Id"),
            QStringLiteral("料号名称"),
            QStringLiteral("原始料名"),
            QStringLiteral("最新上传时间"),
            QStringLiteral("板层"),
            QStringLiteral("feature数"),
            QStringLiteral("状态"),
            QStringLiteral("前处理审核时间"),
            QStringLiteral("FGuid"),
            QStringLiteral("前处理人"),
            QStringLiteral("前处理审核人"),
            QStringLiteral("审核人ID"),
            QStringLiteral("料号管理备注"),
            QStringLiteral("uuid"),
            QStringLiteral("是否web端"),
            QStringLiteral("order表suffix"),
            QStringLiteral("pro_origfiles表suffix"),
            QStringLiteral("批号")};
}

QList<QString> flowRow(const DataLib::Model::Odbpp_Flow_View &flow)
{
    return {QString::number(flow.id),
            text(flow.jobName),
            text(flow.origJobName),
            text(flow.odbppUploaded == 1 ? flow.odbppUploadTime : flow.origUploadTime),
            QString::number(flow.layerCount),
            QString::number(flow.featureCount),
            flowStatusText(flow.flowStatus, flow.checkFlag),
            text(flow.preCheckTime),
            text(flow.flowGuid),
            text(flow.preUserRealName),
            text(flow.preCheckUserRealName),
            QString::number(flow.preCheckUserId),
            text(flow.tips),
            text(flow.uuid),
            QString::number(flow.webFlag),
            text(flow.orderSuffix),
            text(flow.origFileSuffix),
            QString::number(flow.batchNumber)};
}

QString shownStatus(int flowStatus, int checkFlag)
{
    return flowStatusText(flowStatus, checkFlag).section(QLatin1Char('|'), 0, 0);
}

} // namespace KODMS::UI
