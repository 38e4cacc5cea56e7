// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DownloadConditions.h"

#include "desks/common/DownloadRights.h"
#include "foundation/search/SearchFields.h"

#include <QString>

namespace KODMS::UI {

namespace {

constexpr int JobNameOfHistory = 1;

/// The field of a combo item that searches one text field; null for the others.
const char *textField(int filterIndex)
{
    switch (filterIndex) {
    case FileFilter::OrigName:
        return SearchField::OrigName;
    case FileFilter::CustomerCode:
        return SearchField::CustomerCode;
    case FileFilter::Remark:
        return SearchField::FileRemark;
    case FileFilter::Executor:
        return SearchField::FileExecutorName;
    case FileFilter::CustomerName:
        return SearchField::CustomerName;
    case FileFilter::CustomerLevelTwo:
        return SearchField::CustomerLevelTwo;
    case FileFilter::CustomerLevelThree:
        return SearchField::CustomerLevelThree;
    default:
        return nullptr;
    }
}

/// Joined by OR from the second condition on, so a condition before these does
/// not bind them; the view service keeps users to their own files.
void appendEveryTextField(ConditionBuilder &conditions)
{
    conditions.add(SearchField::OrigName).joinByOr();
    if (seesCustomerNames())
        conditions.add(SearchField::CustomerName);
    conditions.add(SearchField::CustomerCode).add(SearchField::FileRemark);
    if (seesCustomerNames())
        conditions.add(SearchField::CustomerLevelTwo).add(SearchField::CustomerLevelThree);
    conditions.add(SearchField::FileExecutorName);
}

/// A text that is no number asks for serial number 0.
void appendSerialNumber(ConditionBuilder &conditions, const QString &text)
{
    conditions.equals().asNumber();
    conditions.add(SearchField::SerialNumber, std::to_string(text.toInt()));
}

/// False, and nothing appended, for an item that the combo does not have.
bool appendText(ConditionBuilder &conditions, int filterIndex, const QString &text)
{
    switch (filterIndex) {
    case FileFilter::All:
        appendEveryTextField(conditions);
        [[fallthrough]]; // everything includes the serial number
    case FileFilter::SerialNumber:
        appendSerialNumber(conditions, text);
        return true;
    default:
        break;
    }
    const char *field = textField(filterIndex);
    if (field)
        conditions.add(field);
    return field;
}

void appendFinishedStatus(ConditionBuilder &conditions)
{
    conditions.joinByAnd().openBracket().add(SearchField::FlowStatus, "2");
    conditions.joinByOr().noOpenBracket().add(SearchField::FlowStatus, "3");
    conditions.joinByAnd().closeBracket().add(SearchField::CheckFlag, "2");
}

void appendConcernedUser(ConditionBuilder &conditions)
{
    conditions.joinByAnd().openBracket().noCloseBracket();
    conditions.add(SearchField::LastImporter, currentUserIdText());
    conditions.joinByOr().noOpenBracket();
    conditions.add(SearchField::FlowCreator, currentUserIdText());
    conditions.add(SearchField::OrigFileExecutor, currentUserIdText());
    conditions.closeBracket().newestFirst(SearchField::FlowCreateTime);
    conditions.add(SearchField::PreCheckExecutor, currentUserIdText());
}

} // namespace

void appendFileSearch(ConditionBuilder &conditions, int filterIndex, const QString &text)
{
    conditions.value(text.toStdString()).contains();
    if (text.isEmpty())
        conditions.add(SearchField::OrigName);
    else if (!appendText(conditions, filterIndex, text))
        return;
    conditions.newestFirst(SearchField::FileCreateTime).addAgain();
}

void appendHistorySearch(ConditionBuilder &conditions, int filterIndex, const QString &text)
{
    conditions.joinByAnd().contains().plainRelation().value(text.toStdString());
    if (filterIndex == JobNameOfHistory && !text.isEmpty())
        conditions.add(SearchField::JobName);
    conditions.equals();
    appendFinishedStatus(conditions);
    appendConcernedUser(conditions);
}

} // namespace KODMS::UI
