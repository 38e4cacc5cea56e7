// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

namespace KODMS::UI {

// Replacement, deletion and the robot are not offered by this version of the desk:
// their buttons are in place and do nothing. The slots stand in the meta-object's
// method table, whose order hosts rely on.

void DMS_Download_Widget::on_m_pUpdateFilePB_Clicked() {}

void DMS_Download_Widget::on_m_pOpenFileFolder() {}

void DMS_Download_Widget::on_m_pRobotComplete_clicked() {}

void DMS_Download_Widget::on_m_pRobotImport_clicked() {}

void DMS_Download_Widget::on_m_pRobotImport_robotImportComplete() {}

void DMS_Download_Widget::on_DelFile_clicked() {}

} // namespace KODMS::UI
