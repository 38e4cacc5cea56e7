// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QAbstractItemView;

namespace KODMS::Host {

/// The selected rows of a list, or all of them when none is, as tab-separated lines
/// in the order in which they stand.
QString tableCopyText(const QAbstractItemView &view);

} // namespace KODMS::Host
