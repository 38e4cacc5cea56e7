// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/UserScope.h"

#include "services/records/ViewScope.h"

namespace KODMS::Services {

Condition UserScope::of(const SearchView &view, const Actor &actor)
{
    const ViewScope scope = &view == &SearchView::flows() ? ViewScope::ofFlowView(actor)
                                                          : ViewScope::ofOrigFileView(actor);
    if (scope.isEverything)
        return Condition::everything();
    if (actor.userId == 0)
        return Condition::nothing();
    std::vector<Condition> ties;
    for (const QString &field : scope.fields)
        ties.push_back(Condition::equalNumber(view.field(field.toStdString()), actor.userId));
    return Condition::any(std::move(ties));
}

} // namespace KODMS::Services
