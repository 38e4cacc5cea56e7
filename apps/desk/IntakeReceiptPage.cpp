// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/IntakeReceiptPage.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace KODMS::Host {

IntakeReceiptPage::IntakeReceiptPage(QWidget *parent) : QWidget(parent)
{
    auto *heading = new QLabel(tr("接收完成，新料号是"), this);
    m_jobName = new QLabel(this);
    m_jobName->setObjectName(QStringLiteral("receiptJobName"));
    m_jobName->setTextFormat(Qt::PlainText);
    m_jobName->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_details = new QLabel(this);
    m_details->setObjectName(QStringLiteral("note"));
    m_details->setTextFormat(Qt::PlainText);
    m_details->setWordWrap(true);
    for (QLabel *label : {heading, m_jobName, m_details})
        label->setAlignment(Qt::AlignCenter);
    auto *copy = new QPushButton(tr("复制料号"), this);
    copy->setObjectName(QStringLiteral("copyJobName"));
    m_next = new QPushButton(tr("再接收一个"), this);
    m_next->setObjectName(QStringLiteral("takeNext"));
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(copy);
    buttons->addWidget(m_next);
    buttons->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setSpacing(16);
    column->addStretch();
    column->addWidget(heading);
    column->addWidget(m_jobName);
    column->addWidget(m_details);
    column->addLayout(buttons);
    column->addStretch();
    connect(copy, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(m_jobName->text()); });
    connect(m_next, &QPushButton::clicked, this, &IntakeReceiptPage::nextRequested);
}

void IntakeReceiptPage::showReceipt(const QString &jobName, const QString &origName)
{
    m_jobName->setText(jobName);
    m_details->setText(tr("原始料名：%1").arg(origName));
    m_next->setFocus();
}

} // namespace KODMS::Host
