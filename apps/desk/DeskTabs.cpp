// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/DeskTabs.h"

#include "apps/desk/ColumnMemory.h"
#include "apps/desk/DeskSearches.h"
#include "apps/desk/Preferences.h"
#include "apps/desk/StatusChipDelegate.h"
#include "desks/download/DMS_Download_Widget.h"
#include "desks/export/DMS_Export_Widget.h"
#include "foundation/ui/DMS_UICommon.h"

#include <QBoxLayout>
#include <QHash>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>

namespace KODMS::Host {

namespace {

enum DeskNumber { ExportDesk, DownloadDesk };

/// Widths that show the usual content whole, by column.
int firstWidth(const QString &columnId)
{
    static const QHash<QString, int> widths{
        {QStringLiteral("料号名称"), 150},     {QStringLiteral("原始料名"), 240},
        {QStringLiteral("状态"), 140},         {QStringLiteral("前处理审核时间"), 190},
        {QStringLiteral("前处理人"), 110},     {QStringLiteral("前处理审核人"), 130},
        {QStringLiteral("料号管理备注"), 260}, {QStringLiteral("批号"), 80},
        {QStringLiteral("原料号名"), 190},     {QStringLiteral("客户简称"), 140},
        {QStringLiteral("客户代号"), 78},      {QStringLiteral("文件类型"), 78},
        {QStringLiteral("流水号"), 78},        {QStringLiteral("来源备注"), 95},
        {QStringLiteral("客户二级"), 95},      {QStringLiteral("客户三级"), 105},
        {QStringLiteral("更新时间"), 158},     {QStringLiteral("创建时间"), 158}};
    return widths.value(columnId, 0);
}

/// In which hidden column a row keeps the GUID of its flow.
int flowColumn(Services::ShownSearch::View view)
{
    constexpr int ofFlows = 8;
    constexpr int ofFiles = 9;
    return view == Services::ShownSearch::View::Flows ? ofFlows : ofFiles;
}

QTableWidget *jobTable(const QWidget &desk)
{
    return desk.findChild<QTableWidget *>(QStringLiteral("m_pJobTableWidget"));
}

int statusColumn(const QTableWidget &table)
{
    for (int column = 0; column < table.columnCount(); ++column) {
        const QTableWidgetItem *item = table.horizontalHeaderItem(column);
        if (item && item->text() == QStringLiteral("状态"))
            return column;
    }
    return -1;
}

/// Both desks name their table alike.
QString memoryKey(const QTableWidget &table)
{
    const QWidget *desk = table.parentWidget();
    while (desk && !desk->inherits("KODMS::UI::DMS_Download_Widget"))
        desk = desk->parentWidget();
    return desk ? QStringLiteral("downloadDesk.") + table.objectName() : table.objectName();
}

/// A page has 30 jobs, a job has few questions.
void giveJobsMostRoom(QWidget &desk)
{
    auto *column = qobject_cast<QBoxLayout *>(desk.layout());
    auto *jobs = desk.findChild<QWidget *>(QStringLiteral("m_pJobGroupBox"));
    auto *questions = desk.findChild<QWidget *>(QStringLiteral("m_pQuestionGroupBox"));
    if (!column || !jobs || !questions)
        return;
    column->setStretchFactor(jobs, 3);
    column->setStretchFactor(questions, 1);
}

/// The looks that a desk brings for its buttons know no disabled state, so that one which
/// does nothing would look like the others.
void showDisabledButtons(const QWidget &desk)
{
    const auto buttons = desk.findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (!button->styleSheet().isEmpty())
            button->setStyleSheet(button->styleSheet() +
                                  QStringLiteral("QPushButton:disabled { background-color: "
                                                 "#505050; color: #a6a6a6; }"));
    }
}

} // namespace

DeskTabs::DeskTabs(Preferences &preferences, int userId, QWidget *parent)
    : QTabWidget(parent), m_preferences(preferences), m_userId(userId),
      m_chips(new StatusChipDelegate(this))
{
    setObjectName(QStringLiteral("deskTabs"));
    setDocumentMode(true);
    tabBar()->setAccessibleName(tr("工作台"));
    buildDesks();
    const auto tables = findChildren<QTableWidget *>();
    for (QTableWidget *table : tables)
        prepareTable(*table);
    for (int desk = 0; desk < count(); ++desk)
        watchTable(*jobTable(*widget(desk)));
    connect(this, &QTabWidget::currentChanged, this, &DeskTabs::jobChanged);
    connect(&Services::ShownSearches::instance(), &Services::ShownSearches::searching, this,
            &DeskTabs::jobChanged);
    setHighContrastStatus(m_preferences.highContrastStatus(m_userId));
}

/// Who searches is known by who is told to: slots are called in the order in which they
/// were connected, and the desks connect theirs while they are built.
void DeskTabs::buildDesks()
{
    m_searches = new DeskSearches([this] { return currentIndex(); }, this);
    UI::DMS_UICommon *hub = UI::DMS_UICommon::interface();
    connect(hub, &UI::DMS_UICommon::refreshExportJobTable, m_searches,
            [this] { m_searches->begin(ExportDesk); });
    connect(hub, &UI::DMS_UICommon::refreshOrigFileTable, m_searches,
            [this] { m_searches->begin(DownloadDesk); });
    m_searches->begin(ExportDesk);
    addExportDesk();
    m_searches->begin(DownloadDesk);
    addDownloadDesk();
    m_searches->done();
    connect(hub, &UI::DMS_UICommon::refreshExportJobTable, m_searches, &DeskSearches::done);
    connect(hub, &UI::DMS_UICommon::refreshOrigFileTable, m_searches, &DeskSearches::done);
}

void DeskTabs::addExportDesk()
{
    m_exportDesk = new UI::DMS_Export_Widget(this);
    giveJobsMostRoom(*m_exportDesk);
    showDisabledButtons(*m_exportDesk);
    addTab(m_exportDesk, tr("料号流程"));
}

void DeskTabs::addDownloadDesk()
{
    m_downloadDesk = new UI::DMS_Download_Widget(this);
    showDisabledButtons(*m_downloadDesk);
    connect(m_downloadDesk, &UI::DMS_Download_Widget::newWebItemNameGetted, m_exportDesk,
            &UI::DMS_Export_Widget::on_parent_newWebItemNameGetted);
    addTab(m_downloadDesk, tr("原始文件"));
}

void DeskTabs::prepareTable(QTableWidget &table)
{
    table.setTabKeyNavigation(false); // else Tab never leaves the table
    QHeaderView *header = table.horizontalHeader();
    header->setSectionsMovable(true);
    header->setStretchLastSection(true);
    header->ensurePolished();
    for (int column = 0; column < header->count(); ++column) {
        if (header->sectionResizeMode(column) != QHeaderView::Interactive)
            continue;
        // Letters and style decide what a column's name needs; most contents need more.
        const int name = header->sectionSizeHint(column);
        const int content = firstWidth(ColumnMemory::columnId(*header, column));
        header->resizeSection(column,
                              qMax(name, content > 0 ? content : header->sectionSize(column)));
    }
    ColumnMemory::restore(*header, m_preferences.columns(m_userId, memoryKey(table)));
}

void DeskTabs::setHighContrastStatus(bool on)
{
    const auto tables = findChildren<QTableWidget *>();
    for (QTableWidget *table : tables) {
        const int column = statusColumn(*table);
        if (column >= 0)
            table->setItemDelegateForColumn(column, on ? m_chips : nullptr);
    }
    m_preferences.setHighContrastStatus(m_userId, on);
}

void DeskTabs::saveColumns()
{
    const auto tables = findChildren<QTableWidget *>();
    for (const QTableWidget *table : tables)
        m_preferences.setColumns(m_userId, memoryKey(*table),
                                 ColumnMemory::save(*table->horizontalHeader()));
}

std::optional<DeskList> DeskTabs::list() const
{
    const auto search = m_searches->last(currentIndex());
    const QTableWidget *table = jobTable(*currentWidget());
    if (!search || !table)
        return std::nullopt;
    DeskList list{tabText(currentIndex()), {}, *search};
    const QHeaderView &header = *table->horizontalHeader();
    for (int visual = 0; visual < header.count(); ++visual) {
        const int column = header.logicalIndex(visual);
        if (!header.isSectionHidden(column))
            list.columns << table->horizontalHeaderItem(column)->text();
    }
    return list;
}

/// A job changes when somebody writes into its row, too, of which nobody else is told.
void DeskTabs::watchTable(const QTableWidget &table)
{
    connect(table.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &DeskTabs::jobChanged);
    connect(&table, &QTableWidget::itemChanged, this, &DeskTabs::jobChanged);
    // For the desk, Enter on a row is the click that shows the job's questions.
    connect(&table, &QTableWidget::itemActivated, &table, &QTableWidget::itemClicked);
}

QString DeskTabs::currentFlow() const
{
    const QTableWidget *table = jobTable(*currentWidget());
    const auto search = m_searches->last(currentIndex());
    if (!search || table->currentRow() < 0)
        return {};
    const QTableWidgetItem *item = table->item(table->currentRow(), flowColumn(search->view));
    return item ? item->text() : QString();
}

void DeskTabs::startSearch()
{
    for (const char *name : {"m_pJobFilterLE", "m_pFilterLE"}) {
        auto *field = currentWidget()->findChild<QLineEdit *>(QLatin1String(name));
        if (!field || field->isHidden())
            continue;
        field->setFocus(Qt::ShortcutFocusReason);
        field->selectAll();
        return;
    }
}

void DeskTabs::sortByCurrentColumn()
{
    const QTableWidget *table = jobTable(*currentWidget());
    if (table->currentColumn() >= 0)
        Q_EMIT table->horizontalHeader()->sectionClicked(table->currentColumn());
}

void DeskTabs::announceClose()
{
    if (m_exportDesk)
        m_exportDesk->on_parent_main_ui_closed();
}

} // namespace KODMS::Host
