// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

namespace KODMS::UI {

// The renewed import is not offered by this version of the desk: its button is in
// place and does nothing. The slot stands in the meta-object's method table, whose
// order hosts rely on.

void DMS_Download_Widget::on_m_pRobotImport_clicked() {}

} // namespace KODMS::UI
