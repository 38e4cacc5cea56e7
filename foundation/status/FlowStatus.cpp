// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/status/FlowStatus.h"

namespace KODMS::UI {

namespace {

struct StatusRow {
    int flowStatus;
    int checkFlag;
    const char *cell;
};

constexpr StatusRow StatusRows[] = {
    {0, 0, "待前处理|white"},         {1, 0, "前处理待审核|lightGray"},
    {1, 1, "前处理未过|r"},           {1, 2, "前处理通过|green"},
    {2, 0, "机器人处理中|lightGray"}, {2, 1, "机器人未过|r"},
    {2, 2, "机器人通过|dg"},          {3, 2, "流程完成|dg"},
};

constexpr char UnknownStatus[] = "未知";

} // namespace

QString flowStatusText(int flowStatus, int checkFlag)
{
    for (const StatusRow &row : StatusRows)
        if (row.flowStatus == flowStatus && row.checkFlag == checkFlag)
            return QString::fromUtf8(row.cell);
    return QString::fromUtf8(UnknownStatus);
}

QuestionCheck questionCheckText(int checkFlag)
{
    switch (checkFlag) {
    case 0:
        return {QStringLiteral("未审核"), std::nullopt};
    case 1:
        return {QStringLiteral("审核未通过"), Qt::red};
    case 2:
        return {QStringLiteral("审核通过"), Qt::darkGreen};
    case 3:
        return {QStringLiteral("完成"), Qt::blue};
    default:
        return {QString::fromUtf8(UnknownStatus), std::nullopt};
    }
}

} // namespace KODMS::UI
