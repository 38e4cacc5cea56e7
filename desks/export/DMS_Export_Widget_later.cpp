// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

namespace KODMS::UI {

// Raising and viewing questions are not offered by this version of the desk: their
// buttons are in place and do nothing. The slots stand in the meta-object's method
// table, whose order hosts rely on.

void DMS_Export_Widget::on_m_pCreateQuestionPB_clicked() {}

void DMS_Export_Widget::on_m_pViewQuestionPB_clicked() {}

void DMS_Export_Widget::on_m_pQuestionTableWidget_ItemDoubleClicked(QTableWidgetItem *) {}

} // namespace KODMS::UI
