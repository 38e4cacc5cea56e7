// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <QString>
#include <QVector>

namespace KODMS::Services {

/// A library that this one stands on: its version at run time, or, of one that does not tell it,
/// at build time.
struct ComponentVersion {
    QString name;
    QString version;
    QString licence;
};

/// All of them, with the database engine when one is running. GUI thread.
KODMS_SERVICES_API QVector<ComponentVersion> componentVersions();

} // namespace KODMS::Services
