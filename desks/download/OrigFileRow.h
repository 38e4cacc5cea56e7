// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/Odbpp_OrigFile_View.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace KODMS::UI {

/// The 16 headers of the table of original files, in the order of OrigFileColumn.
QStringList origFileHeaders();

/// The 16 cell strings of one original file, in the order of OrigFileColumn.
QList<QString> origFileRow(const DataLib::Model::Odbpp_OrigFile_View &file);

} // namespace KODMS::UI
