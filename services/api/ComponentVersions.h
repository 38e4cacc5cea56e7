// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <QString>
#include <QVector>

namespace KODMS::Services {

/// A library that this one stands on, as it is at run time.
struct ComponentVersion {
    QString name;
    QString version;
    QString licence;
};

/// Qt, the database engine (when one is running), the archive and the password
/// library. GUI thread.
KODMS_SERVICES_API QVector<ComponentVersion> componentVersions();

} // namespace KODMS::Services
