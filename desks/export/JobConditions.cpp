// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/JobConditions.h"

#include "foundation/search/SearchFields.h"

namespace KODMS::UI {

void appendStatusFilter(ConditionBuilder &conditions, int statusIndex)
{
    switch (statusIndex) {
    case StatusFilter::AwaitingPreProcess:
        conditions.add(SearchField::FlowStatus, "0").add(SearchField::CheckFlag, "0");
        break;
    case StatusFilter::AwaitingReview:
        conditions.add(SearchField::FlowStatus, "1").add(SearchField::CheckFlag, "0");
        break;
    case StatusFilter::Failed:
        conditions.add(SearchField::CheckFlag, "1");
        break;
    case StatusFilter::Passed:
        conditions.add(SearchField::CheckFlag, "2");
        break;
    case StatusFilter::Finished:
        // No flow is shown with flag 3; the filter asks for it all the same.
        conditions.add(SearchField::CheckFlag, "3");
        break;
    case StatusFilter::AtRobot:
        conditions.add(SearchField::FlowStatus, "2").add(SearchField::CheckFlag, "0");
        break;
    default:
        break;
    }
}

void appendStatusScope(ConditionBuilder &conditions)
{
    conditions.joinByAnd().openBracket().plainRelation().equals();
    conditions.add(SearchField::FlowStatus, "0");
    conditions.noOpenBracket().add(SearchField::CheckFlag, "0");
    conditions.joinByOr().equals().add(SearchField::FlowStatus, "1");
    conditions.joinByAnd().equals().noCloseBracket().add(SearchField::CheckFlag, "0");
    conditions.joinByOr().equals().add(SearchField::FlowStatus, "1");
    conditions.joinByAnd().equals().add(SearchField::CheckFlag, "1");
    conditions.joinByOr().equals().add(SearchField::FlowStatus, "1");
    conditions.joinByAnd().equals().add(SearchField::CheckFlag, "2");
    conditions.joinByOr().equals().add(SearchField::FlowStatus, "2");
    conditions.joinByAnd().equals().add(SearchField::CheckFlag, "0");
    conditions.joinByOr().equals().add(SearchField::FlowStatus, "2");
    conditions.joinByAnd().equals().closeBracket().add(SearchField::CheckFlag, "1");
}

void appendUserScope(ConditionBuilder &conditions)
{
    conditions.joinByAnd().openBracket().plainRelation();
    conditions.add(SearchField::JobCreator, currentUserIdText());
    conditions.joinByOr().noOpenBracket();
    conditions.add(SearchField::FlowCreator, currentUserIdText());
    conditions.add(SearchField::OrigFileExecutor, currentUserIdText());
    conditions.closeBracket().add(SearchField::PreCheckExecutor, currentUserIdText());
}

} // namespace KODMS::UI
