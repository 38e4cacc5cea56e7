// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HistoryPanel.h"

#include "apps/desk/TableCopyText.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include <utility>

namespace KODMS::Host {

HistoryPanel::HistoryPanel(std::function<QString()> selected, QWidget *parent)
    : QDockWidget(tr("料号历史"), parent), m_selected(std::move(selected)), m_soon(new QTimer(this))
{
    setObjectName(QStringLiteral("historyPanel"));
    setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    setAllowedAreas(Qt::BottomDockWidgetArea | Qt::RightDockWidgetArea);
    m_soon->setSingleShot(true);
    m_soon->setInterval(0);
    buildTable();
    setTitleBarWidget(makeTitleBar());
    setWidget(m_table);
    connect(m_soon, &QTimer::timeout, this, &HistoryPanel::reload);
    connect(m_older, &QPushButton::clicked, &m_log, &HistoryLog::showOlder);
    connect(m_copy, &QPushButton::clicked, this, &HistoryPanel::copy);
    connect(&m_log, &HistoryLog::changed, this, &HistoryPanel::updateTitle);
    updateTitle();
}

void HistoryPanel::buildTable()
{
    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("history"));
    m_table->setAccessibleName(tr("料号历史"));
    m_table->setModel(&m_log);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->setTabKeyNavigation(false);
    m_table->verticalHeader()->hide();
    QHeaderView &columns = header();
    columns.setHighlightSections(false);
    columns.setStretchLastSection(true);
    columns.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    columns.resizeSection(HistoryLog::TimeColumn, 170);
    columns.resizeSection(HistoryLog::WhoColumn, 110);
    columns.resizeSection(HistoryLog::ActionColumn, 190);
    auto *copyKey = new QAction(m_table);
    copyKey->setShortcut(QKeySequence::Copy);
    copyKey->setShortcutContext(Qt::WidgetShortcut);
    m_table->addAction(copyKey);
    connect(copyKey, &QAction::triggered, this, &HistoryPanel::copy);
}

QWidget *HistoryPanel::makeTitleBar()
{
    auto *bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("panelTitle"));
    bar->setAttribute(Qt::WA_StyledBackground);
    m_title = new QLabel(bar);
    m_title->setObjectName(QStringLiteral("historyTitle"));
    m_title->setTextFormat(Qt::PlainText);
    m_older = new QPushButton(tr("更早的记录"), bar);
    m_older->setObjectName(QStringLiteral("olderHistory"));
    m_copy = new QPushButton(tr("复制"), bar);
    m_copy->setObjectName(QStringLiteral("copyHistory"));
    m_copy->setToolTip(tr("复制所选的行；没有选择时复制全部"));
    auto *close = new QPushButton(tr("收起"), bar);
    close->setObjectName(QStringLiteral("closeHistory"));
    connect(close, &QPushButton::clicked, this, &HistoryPanel::close);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(12, 4, 8, 4);
    row->addWidget(m_title);
    row->addStretch();
    for (QPushButton *button : {m_older, m_copy, close})
        row->addWidget(button);
    return bar;
}

QHeaderView &HistoryPanel::header() const
{
    return *m_table->horizontalHeader();
}

void HistoryPanel::copy()
{
    QGuiApplication::clipboard()->setText(tableCopyText(*m_table));
}

void HistoryPanel::showEvent(QShowEvent *event)
{
    QDockWidget::showEvent(event);
    reloadSoon();
}

void HistoryPanel::reloadSoon()
{
    m_soon->start();
}

/// A refresh of the desk takes its selection away; the job in hand stays the job in hand.
void HistoryPanel::reload()
{
    if (!isVisible())
        return;
    const QString selected = m_selected();
    if (!selected.isEmpty())
        m_flowGuid = selected;
    if (m_flowGuid.isEmpty() || m_flowGuid == m_unreadable)
        return;
    m_log.show(m_flowGuid);
    m_unreadable = m_log.jobName().isEmpty() ? m_flowGuid : QString();
}

void HistoryPanel::updateTitle()
{
    const QString job = m_log.jobName();
    m_title->setText(job.isEmpty() ? tr("料号历史：请选择一个料号") : tr("料号历史：%1").arg(job));
    m_older->setEnabled(m_log.hasOlder());
    m_copy->setEnabled(m_log.rowCount() > 0);
}

} // namespace KODMS::Host
