// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/IntakeDialog.h"

#include "apps/desk/IntakeForm.h"
#include "apps/desk/IntakeReceiptPage.h"
#include "services/api/Intake.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace KODMS::Host {

IntakeDialog::IntakeDialog(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("intakeDialog"));
    setWindowTitle(tr("接收客户文件"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_form = new IntakeForm;
    m_receipt = new IntakeReceiptPage;
    buildLayout();
    connect(m_take, &QPushButton::clicked, this, &IntakeDialog::take);
    connect(m_close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_receipt, &IntakeReceiptPage::nextRequested, this, &IntakeDialog::startNext);
    showPage(m_form);
    m_form->setFocus();
}

void IntakeDialog::buildLayout()
{
    m_pages = new QStackedWidget(this);
    m_pages->addWidget(m_form);
    m_pages->addWidget(m_receipt);
    m_take = new QPushButton(tr("接收"), this);
    m_take->setObjectName(QStringLiteral("primary"));
    m_take->setDefault(true);
    m_close = new QPushButton(tr("关闭"), this);
    m_close->setObjectName(QStringLiteral("closeIntake"));
    m_close->setAutoDefault(false);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_take);
    buttons->addWidget(m_close);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(20, 20, 20, 16);
    column->setSpacing(12);
    column->addWidget(m_pages);
    column->addLayout(buttons);
    setMinimumWidth(520);
}

void IntakeDialog::choosePath(const QString &path)
{
    m_form->choosePath(path);
}

void IntakeDialog::take()
{
    if (!m_form->validate())
        return;
    const Services::IntakeRequest request = m_form->request();
    const auto receipt = Services::Intake::take(request);
    if (!receipt) {
        m_form->showError(receipt.text());
        return;
    }
    showPage(m_receipt);
    m_receipt->showReceipt(receipt.value.jobName, request.origName);
}

void IntakeDialog::startNext()
{
    m_form->prepareNext();
    showPage(m_form);
    m_form->setFocus();
}

void IntakeDialog::showPage(QWidget *page)
{
    m_pages->setCurrentWidget(page);
    m_take->setVisible(page == m_form);
}

} // namespace KODMS::Host
