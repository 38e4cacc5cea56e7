// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Actor.h"

#include <QStringList>

namespace KODMS::Services {

/// Which rows of a view a user may see. The one definition: the searches narrow
/// by it, and the changes ask it whether a flow is in the user's scope.
struct ViewScope {
    bool isEverything = false;
    /// Else a row is visible when one of these fields of the view is the user's id.
    QStringList fields;

    static ViewScope ofFlowView(const Actor &actor);
    static ViewScope ofOrigFileView(const Actor &actor);
};

} // namespace KODMS::Services
