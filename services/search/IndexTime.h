// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace KODMS::Services {

/// Creation times as numbers in the same order.
namespace IndexTime {

/// Of "yyyy-MM-ddTHH:mm:ss.zzzZ"; nothing for any other text.
std::optional<std::int64_t> numberOf(std::string_view text);

} // namespace IndexTime

} // namespace KODMS::Services
