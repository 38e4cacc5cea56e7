// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"

#include <QString>
#include <QVector>

namespace KODMS::Services {

struct CustomerName {
    QString code;
    QString name;
};

/// The customers, for who may take in their files. GUI thread.
class KODMS_SERVICES_API Customers {
public:
    /// Every customer, by code. Refused without the right to take in files, since
    /// not everybody may see who the customers are.
    static Result<QVector<CustomerName>> known();
};

} // namespace KODMS::Services
