// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Services {

/// The customers' orders, for the administration tool.
class KODMS_SERVICES_API Orders {
public:
    /// Marks the order of the named job as paid; audited. Fails when there is no
    /// such job or order; an order that is paid already stays so.
    static Outcome pay(const QString &jobName);
};

} // namespace KODMS::Services
