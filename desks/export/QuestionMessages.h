// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::UI {

/// What a question's actions say when the table of questions has no current row.
constexpr char SelectQuestion[] = "请选择一个问题项";

} // namespace KODMS::UI
