// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;

namespace KODMS::UI {

constexpr char OrderUnpaid[] = "此流程状态未付款";

/// Whether a flow's order is paid, asked afresh; a flow without an order is not.
bool isOrderPaid(const QString &flowGuid);

} // namespace KODMS::UI
