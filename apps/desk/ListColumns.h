// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/ListExport.h"

#include <QStringList>

namespace KODMS::Host {

/// The columns of the desks' tables as an exported list has them, under the desks' own
/// titles.
struct ListColumns {
    /// Of job flows, in the order of `shown`; all when `shown` is no table of job flows.
    static QVector<Services::FlowColumn> flows(const QStringList &shown);

    /// Of original files; those that tell customers' names only when they are in `shown`.
    static QVector<Services::OrigFileColumn> origFiles(const QStringList &shown);
};

} // namespace KODMS::Host
