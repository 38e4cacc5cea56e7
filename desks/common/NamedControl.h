// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>

#include <utility>

namespace KODMS::UI {

/// Makes a control or a layout that bears its member's name as object name, so
/// that tests, styles and screen readers can address it.
template <typename Control, typename... Arguments>
Control *makeNamed(const char *name, Arguments &&...arguments)
{
    auto *control = new Control(std::forward<Arguments>(arguments)...);
    control->setObjectName(QLatin1String(name));
    return control;
}

} // namespace KODMS::UI
