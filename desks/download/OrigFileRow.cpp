// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/OrigFileRow.h"

namespace KODMS::UI {

namespace {

constexpr char WebCustomer[] = "web";
constexpr int SuffixLength = 4; // a dot and three letters
constexpr int SerialDigits = 6;

QString text(const std::string &utf8)
{
    return QString::fromStdString(utf8);
}

/// Files that came in through the web bear the name under which they are stored.
QString shownName(const DataLib::Model::Odbpp_OrigFile_View &file)
{
    if (file.koCode != WebCustomer)
        return text(file.origName);
    QString name = text(file.uuid);
    name.chop(SuffixLength);
    return name;
}

QString shownType(const DataLib::Model::Odbpp_OrigFile_View &file)
{
    return file.fileType.empty() ? QStringLiteral("file") : text(file.fileType);
}

} // namespace

QStringList origFileHeaders()
{
    return {QStringLiteral("原料号名"),  QStringLiteral("客户简称"), QStringLiteral("客户代号"),
            QStringLiteral("文件类型"),  QStringLiteral("流水号"),   QStringLiteral("UUID"),
            QStringLiteral("ID"),        QStringLiteral("文件描述"), QStringLiteral("来源备注"),
            QStringLiteral("FlowGUID"),  QStringLiteral("客户二级"), QStringLiteral("客户三级"),
            QStringLiteral("更新时间"),  QStringLiteral("创建时间"), QStringLiteral("前处理人"),
            QStringLiteral("前处理人ID")};
}

QList<QString> origFileRow(const DataLib::Model::Odbpp_OrigFile_View &file)
{
    return {shownName(file),
            text(file.koName),
            text(file.koCode),
            shownType(file),
            QStringLiteral("%1").arg(file.jobSerialNumber, SerialDigits, 10, QLatin1Char('0')),
            text(file.uuid),
            QString::number(file.id),
            text(file.fileDescription),
            text(file.fileTips),
            text(file.flowGuid),
            text(file.superiorCo1),
            text(file.superiorCo2),
            text(file.updateTime),
            text(file.createTime),
            text(file.preUserRealName),
            QString::number(file.preUserId)};
}

} // namespace KODMS::UI
