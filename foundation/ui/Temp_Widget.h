// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <QWidget>

namespace KODMS::UI {

/// Base of the page-turning bar: the signal and the five page slots, which do
/// nothing here.
class KODMS_SERVICES_API Temp_Widget : public QWidget {
    Q_OBJECT

public:
    explicit Temp_Widget(QWidget *parent);
    ~Temp_Widget() override;

Q_SIGNALS:
    /// The user asked for another page.
    void currentPageChanged();

public Q_SLOTS:
    virtual void on_m_pFirstPagePB_clicked();
    virtual void on_m_pPageUpPB_clicked();
    virtual void on_m_pPageDownPB_clicked();
    virtual void on_m_pLastPagePB_clicked();
    virtual void on_m_pGotoPageLE_editingFinished();
};

} // namespace KODMS::UI
