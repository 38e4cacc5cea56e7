// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HandOverPanel.h"

#include "apps/desk/HandOverFolder.h"
#include "apps/desk/HandOverLog.h"
#include "apps/desk/TableCopyText.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>

namespace KODMS::Host {

HandOverPanel::HandOverPanel(HandOverLog &log, QWidget *parent)
    : QDockWidget(tr("CAM 交接"), parent), m_log(log)
{
    setObjectName(QStringLiteral("handOverPanel"));
    setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    setAllowedAreas(Qt::BottomDockWidgetArea | Qt::RightDockWidgetArea);
    buildTable();
    buildActions();
    setTitleBarWidget(makeTitleBar());
    setWidget(m_table);
    connect(m_table, &QTableView::doubleClicked, this, &HandOverPanel::openRow);
    connect(&m_log, &HandOverLog::countChanged, this, &HandOverPanel::updateActions);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &HandOverPanel::updateActions);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &HandOverPanel::updateActions);
    updateActions();
}

void HandOverPanel::buildTable()
{
    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("handOvers"));
    m_table->setAccessibleName(tr("CAM 交接"));
    m_table->setModel(&m_log);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->setTextElideMode(Qt::ElideMiddle);
    m_table->setTabKeyNavigation(false);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_table->verticalHeader()->hide();
    QHeaderView &columns = header();
    columns.setSectionsMovable(true);
    columns.setHighlightSections(false);
    columns.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    columns.setSectionResizeMode(HandOverLog::PathColumn, QHeaderView::Stretch);
    columns.resizeSection(HandOverLog::TimeColumn, 160);
    columns.resizeSection(HandOverLog::KindColumn, 64);
    columns.resizeSection(HandOverLog::JobColumn, 105);
    columns.resizeSection(HandOverLog::ParametersColumn, 200);
}

void HandOverPanel::buildActions()
{
    m_openAction = new QAction(tr("打开文件夹(&O)"), m_table);
    m_openAction->setObjectName(QStringLiteral("openHandOverFolder"));
    m_openAction->setShortcuts({QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
    m_copyAction = new QAction(tr("复制(&C)"), m_table);
    m_copyAction->setObjectName(QStringLiteral("copyHandOverRows"));
    m_copyAction->setShortcut(QKeySequence::Copy);
    for (QAction *action : {m_openAction, m_copyAction}) {
        action->setShortcutContext(Qt::WidgetShortcut);
        m_table->addAction(action);
    }
    connect(m_openAction, &QAction::triggered, this, &HandOverPanel::openFolder);
    connect(m_copyAction, &QAction::triggered, this, &HandOverPanel::copy);
}

QWidget *HandOverPanel::makeTitleBar()
{
    auto *bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("panelTitle"));
    bar->setAttribute(Qt::WA_StyledBackground);
    m_open = new QPushButton(tr("打开文件夹"), bar);
    m_open->setObjectName(QStringLiteral("openHandOver"));
    m_open->setToolTip(tr("在系统的文件管理器中打开所选料号的文件夹"));
    m_copy = new QPushButton(tr("复制"), bar);
    m_copy->setObjectName(QStringLiteral("copyHandOvers"));
    m_copy->setToolTip(tr("复制所选的行；没有选择时复制全部"));
    auto *close = new QPushButton(tr("收起"), bar);
    close->setObjectName(QStringLiteral("closeHandOvers"));
    connect(m_open, &QPushButton::clicked, this, &HandOverPanel::openFolder);
    connect(m_copy, &QPushButton::clicked, this, &HandOverPanel::copy);
    connect(close, &QPushButton::clicked, this, &HandOverPanel::close);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(12, 4, 8, 4);
    row->addWidget(new QLabel(tr("CAM 交接"), bar));
    row->addStretch();
    for (QPushButton *button : {m_open, m_copy, close})
        row->addWidget(button);
    return bar;
}

QHeaderView &HandOverPanel::header() const
{
    return *m_table->horizontalHeader();
}

void HandOverPanel::copy()
{
    QGuiApplication::clipboard()->setText(tableCopyText(*m_table));
}

void HandOverPanel::openFolder()
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    if (rows.size() == 1)
        openRow(rows.first());
}

void HandOverPanel::openRow(const QModelIndex &index)
{
    const QString problem = HandOverFolder::open(m_log.at(index.row()));
    if (problem.isEmpty())
        return;
    QMessageBox box(QMessageBox::Warning, tr("打开文件夹"), problem, QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void HandOverPanel::updateActions()
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    const bool hasFolder =
        rows.size() == 1 && !HandOverFolder::of(m_log.at(rows.first().row())).isEmpty();
    const bool some = m_log.rowCount() > 0;
    m_openAction->setEnabled(hasFolder);
    m_open->setEnabled(hasFolder);
    m_copyAction->setEnabled(some);
    m_copy->setEnabled(some);
}

} // namespace KODMS::Host
