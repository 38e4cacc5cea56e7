// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/QuestionState.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("QuestionState", text);
}

} // namespace

QuestionState questionState(int checkFlag)
{
    switch (checkFlag) {
    case 0:
        return {tr("未审核"), std::nullopt};
    case 1:
        return {tr("审核未通过"), Qt::red};
    case 2:
        return {tr("审核通过"), Qt::darkGreen};
    case 3:
        return {tr("完成"), Qt::blue};
    default:
        return {tr("未知"), std::nullopt};
    }
}

} // namespace KODMS::Services
