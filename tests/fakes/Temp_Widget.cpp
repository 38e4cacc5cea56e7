// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/Temp_Widget.h"

namespace KODMS::UI {

Temp_Widget::Temp_Widget(QWidget *parent) : QWidget(parent) {}

Temp_Widget::~Temp_Widget() = default;

void Temp_Widget::on_m_pFirstPagePB_clicked() {}

void Temp_Widget::on_m_pPageUpPB_clicked() {}

void Temp_Widget::on_m_pPageDownPB_clicked() {}

void Temp_Widget::on_m_pLastPagePB_clicked() {}

void Temp_Widget::on_m_pGotoPageLE_editingFinished() {}

} // namespace KODMS::UI
