// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

class QPushButton;
class QStackedWidget;

namespace KODMS::Host {

class IntakeForm;
class IntakeReceiptPage;

/// Takes in a customer's archive or folder as a new job, and shows its name.
class IntakeDialog : public QDialog {
    Q_OBJECT

public:
    explicit IntakeDialog(QWidget *parent = nullptr);

    /// Chooses the file or folder, as a drop does.
    void choosePath(const QString &path);

private Q_SLOTS:
    void take();
    void startNext();

private:
    void buildLayout();
    void showPage(QWidget *page);

    QStackedWidget *m_pages = nullptr;
    IntakeForm *m_form = nullptr;
    IntakeReceiptPage *m_receipt = nullptr;
    QPushButton *m_take = nullptr;
    QPushButton *m_close = nullptr;
};

} // namespace KODMS::Host
