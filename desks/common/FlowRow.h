// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/Odbpp_Flow_View.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace KODMS::UI {

/// The 18 headers of a table of job flows, in the order of JobColumn.
QStringList flowHeaders();

/// The 18 cell strings of one flow, in the order of JobColumn; the status cell
/// carries its colour code.
QList<QString> flowRow(const DataLib::Model::Odbpp_Flow_View &flow);

/// The status word as the table shows it: its colour code has become a colour.
QString shownStatus(int flowStatus, int checkFlag);

} // namespace KODMS::UI
