// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/NoticePanel.h"

#include "apps/desk/NoticeLog.h"
#include "apps/desk/TableCopyText.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

namespace KODMS::Host {

NoticePanel::NoticePanel(NoticeLog &log, QWidget *parent)
    : QDockWidget(tr("通知"), parent), m_log(log)
{
    setObjectName(QStringLiteral("noticePanel"));
    setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    setAllowedAreas(Qt::BottomDockWidgetArea | Qt::RightDockWidgetArea);
    buildTable();
    setTitleBarWidget(makeTitleBar());
    setWidget(m_table);
    connect(m_copy, &QPushButton::clicked, this, &NoticePanel::copy);
    connect(m_clear, &QPushButton::clicked, &m_log, &NoticeLog::clear);
    connect(&m_log, &NoticeLog::latestChanged, this, &NoticePanel::updateButtons);
    updateButtons();
}

void NoticePanel::buildTable()
{
    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("notices"));
    m_table->setAccessibleName(tr("通知"));
    m_table->setModel(&m_log);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setTabKeyNavigation(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    QHeaderView *header = m_table->horizontalHeader();
    header->setStretchLastSection(true);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->resizeSection(NoticeLog::TimeColumn, 170);
    header->resizeSection(NoticeLog::LevelColumn, 120);
    auto *copyKey = new QAction(m_table);
    copyKey->setShortcut(QKeySequence::Copy);
    copyKey->setShortcutContext(Qt::WidgetShortcut);
    m_table->addAction(copyKey);
    connect(copyKey, &QAction::triggered, this, &NoticePanel::copy);
}

QWidget *NoticePanel::makeTitleBar()
{
    auto *bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("panelTitle"));
    bar->setAttribute(Qt::WA_StyledBackground);
    m_copy = new QPushButton(tr("复制"), bar);
    m_copy->setObjectName(QStringLiteral("copyNotices"));
    m_copy->setToolTip(tr("复制所选通知；没有选择时复制全部"));
    m_clear = new QPushButton(tr("清空"), bar);
    m_clear->setObjectName(QStringLiteral("clearNotices"));
    auto *close = new QPushButton(tr("收起"), bar);
    close->setObjectName(QStringLiteral("closeNotices"));
    connect(close, &QPushButton::clicked, this, &NoticePanel::close);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(12, 4, 8, 4);
    row->addWidget(new QLabel(tr("通知"), bar));
    row->addStretch();
    for (QPushButton *button : {m_copy, m_clear, close})
        row->addWidget(button);
    return bar;
}

void NoticePanel::copy()
{
    QGuiApplication::clipboard()->setText(tableCopyText(*m_table));
}

void NoticePanel::showEvent(QShowEvent *event)
{
    QDockWidget::showEvent(event);
    m_log.markRead();
}

void NoticePanel::updateButtons()
{
    const bool some = m_log.rowCount() > 0;
    m_copy->setEnabled(some);
    m_clear->setEnabled(some);
    if (isVisible())
        m_log.markRead();
}

} // namespace KODMS::Host
