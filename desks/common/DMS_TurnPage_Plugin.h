// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/common/NamedControl.h"
#include "foundation/model/DB_Search.h"
#include "foundation/status/ColourCode.h"
#include "foundation/ui/Temp_Widget.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QList>
#include <QMessageBox>
#include <QPushButton>
#include <QRegExpValidator>
#include <QString>
#include <QTableWidget>

#include <string>
#include <utility>
#include <vector>

namespace KODMS::UI {

/// The bar under a paged table: first page, previous, page number, number of
/// pages, next, last page. It holds the rows of the present page and puts them
/// into the table; it never queries. The desk asks it for the page window,
/// queries, and hands the rows over; currentPageChanged() asks for a new query.
///
/// `Data` is a list of rows, a row a list of cell strings; a cell string may end
/// with "|" and a colour code. `Table` is a pointer to a QTableWidget, which the
/// bar does not own. The bar shows itself only when there is more than one page.
template <typename Data, typename Table> class DMS_TurnPage_Plugin : public Temp_Widget {
public:
    static constexpr int PageSize = 30; ///< rows a page

    /// A bar on page 1 over `rows` (copied) and `table`.
    DMS_TurnPage_Plugin(Data rows, Table table, QWidget *parent);
    ~DMS_TurnPage_Plugin() override = default;

    /// Shows `rows` as the present page of `totalCount` rows. Every row with a
    /// cell text equal to a non-empty `selectKey` is selected. With no rows in
    /// all pages the table stays as it is: the desk empties it before.
    void setData(Data rows, int totalCount, QString selectKey);

    /// Writes the page window into the last condition; `restart` goes back to
    /// page 1 first. An empty list throws std::out_of_range.
    void setSearchPage(std::vector<DataLib::Model::DB_Search> &conditions, bool restart);

    /// Moves to the last page of `totalCount` rows when the present page lies
    /// beyond it. True when it moved; the desk then has to query again. For no
    /// rows the last page is page 0: desks do not ask for that.
    bool clampPage(int totalCount);

    void on_m_pFirstPagePB_clicked() override;
    void on_m_pPageUpPB_clicked() override;
    void on_m_pPageDownPB_clicked() override;
    void on_m_pLastPagePB_clicked() override;
    void on_m_pGotoPageLE_editingFinished() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static int pagesOf(int totalCount);
    void buildBar();
    void connectBar();
    void fill();
    QTableWidgetItem *makeCell(int row, const QString &cell);
    void putCell(int row, int column, QTableWidgetItem *item);

    void showCurrentPage() { m_pGotoPageLE->setText(QString::number(m_currentPage)); }

    void showTotalPages();
    void refuseJump();

    Data m_data;
    Table m_pTable;
    QPushButton *m_pFirstPagePB = nullptr;
    QPushButton *m_pPageUpPB = nullptr;
    QLineEdit *m_pGotoPageLE = nullptr;
    QLabel *m_pTotalLabel = nullptr;
    QPushButton *m_pPageDownPB = nullptr;
    QPushButton *m_pLastPagePB = nullptr;
    QSpacerItem *m_pLeftSpacer = nullptr;
    QSpacerItem *m_pRightSpacer = nullptr;
    QHBoxLayout *m_pBarLayout = nullptr;
    int m_totalPages = 0;
    int m_currentPage = 1;
    int m_totalCount = 0;
    QString m_selectKey;
};

template <typename Data, typename Table>
DMS_TurnPage_Plugin<Data, Table>::DMS_TurnPage_Plugin(Data rows, Table table, QWidget *parent)
    : Temp_Widget(parent), m_data(std::move(rows)), m_pTable(table)
{
    buildBar();
    connectBar();
}

template <typename Data, typename Table> void DMS_TurnPage_Plugin<Data, Table>::buildBar()
{
    m_pFirstPagePB = makeNamed<QPushButton>("m_pFirstPagePB", QStringLiteral("第一页"), this);
    m_pPageUpPB = makeNamed<QPushButton>("m_pPageUpPB", QStringLiteral("上一页"), this);
    m_pGotoPageLE = makeNamed<QLineEdit>("m_pGotoPageLE", this);
    m_pTotalLabel = makeNamed<QLabel>("m_pTotalLabel", this);
    m_pPageDownPB = makeNamed<QPushButton>("m_pPageDownPB", QStringLiteral("下一页"), this);
    m_pLastPagePB = makeNamed<QPushButton>("m_pLastPagePB", QStringLiteral("最后一页"), this);
    m_pLeftSpacer = new QSpacerItem(3, 1, QSizePolicy::Expanding, QSizePolicy::Minimum);
    m_pRightSpacer = new QSpacerItem(3, 1, QSizePolicy::Expanding, QSizePolicy::Minimum);

    m_pBarLayout = new QHBoxLayout(this);
    m_pBarLayout->addItem(m_pLeftSpacer);
    m_pBarLayout->addWidget(m_pFirstPagePB);
    m_pBarLayout->addWidget(m_pPageUpPB);
    m_pBarLayout->addWidget(m_pGotoPageLE);
    m_pBarLayout->addWidget(m_pTotalLabel);
    m_pBarLayout->addWidget(m_pPageDownPB);
    m_pBarLayout->addWidget(m_pLastPagePB);
    m_pBarLayout->addItem(m_pRightSpacer);

    m_pGotoPageLE->setMaximumWidth(50);
    const QRegExp digits(QStringLiteral("[0-9]{1,20}$"), Qt::CaseSensitive);
    m_pGotoPageLE->setValidator(new QRegExpValidator(digits, m_pGotoPageLE));
    m_pGotoPageLE->setText(QStringLiteral("1"));
}

template <typename Data, typename Table> void DMS_TurnPage_Plugin<Data, Table>::connectBar()
{
    connect(m_pFirstPagePB, SIGNAL(clicked()), this, SLOT(on_m_pFirstPagePB_clicked()));
    connect(m_pPageDownPB, SIGNAL(clicked()), this, SLOT(on_m_pPageDownPB_clicked()));
    connect(m_pPageUpPB, SIGNAL(clicked()), this, SLOT(on_m_pPageUpPB_clicked()));
    connect(m_pLastPagePB, SIGNAL(clicked()), this, SLOT(on_m_pLastPagePB_clicked()));
    connect(m_pGotoPageLE, SIGNAL(editingFinished()), this,
            SLOT(on_m_pGotoPageLE_editingFinished()));
    m_pGotoPageLE->installEventFilter(this);
}

template <typename Data, typename Table>
void DMS_TurnPage_Plugin<Data, Table>::setData(Data rows, int totalCount, QString selectKey)
{
    m_data = std::move(rows);
    m_selectKey = std::move(selectKey);
    m_totalCount = totalCount;
    fill();
    showCurrentPage();
    showTotalPages();
}

template <typename Data, typename Table>
void DMS_TurnPage_Plugin<Data, Table>::setSearchPage(
    std::vector<DataLib::Model::DB_Search> &conditions, bool restart)
{
    auto &page = conditions.at(conditions.size() - 1);
    if (restart) {
        m_currentPage = 1;
        showCurrentPage();
    }
    page.pageEnabled = 1;
    page.pageStart = std::to_string(m_currentPage * PageSize - PageSize);
    page.pageSize = std::to_string(PageSize);
}

template <typename Data, typename Table>
bool DMS_TurnPage_Plugin<Data, Table>::clampPage(int totalCount)
{
    const int pages = pagesOf(totalCount);
    if (m_currentPage <= pages)
        return false;
    m_currentPage = pages;
    return true;
}

template <typename Data, typename Table>
int DMS_TurnPage_Plugin<Data, Table>::pagesOf(int totalCount)
{
    const int wholePages = totalCount / PageSize;
    return totalCount - PageSize * wholePages > 0 ? wholePages + 1 : wholePages;
}

template <typename Data, typename Table> void DMS_TurnPage_Plugin<Data, Table>::fill()
{
    m_totalPages = pagesOf(m_totalCount);
    setVisible(m_totalPages > 1);
    if (m_totalPages == 0)
        return;
    m_pTable->setRowCount(m_data.size());
    for (int row = 0; row < m_data.size(); ++row) {
        const auto &cells = m_data.at(row);
        for (int column = 0; column < cells.size(); ++column)
            putCell(row, column, makeCell(row, cells.at(column)));
    }
}

template <typename Data, typename Table>
QTableWidgetItem *DMS_TurnPage_Plugin<Data, Table>::makeCell(int row, const QString &cell)
{
    // Most cells have no bar; splitting them would cost more than the item itself.
    const int bar = cell.indexOf(QLatin1Char('|'));
    const QString text = bar < 0 ? cell : cell.left(bar);
    auto *item = new QTableWidgetItem(text);
    if (!m_selectKey.isEmpty() && m_selectKey == text)
        m_pTable->selectRow(row);
    if (bar >= 0)
        applyColourCode(cell.section(QLatin1Char('|'), 1, 1), item);
    return item;
}

/// The table owns its items. A row may have more cells than the table has columns
/// (flows in the table of original files); the table would count such a cell into
/// the next row, or lose it after the last one.
template <typename Data, typename Table>
void DMS_TurnPage_Plugin<Data, Table>::putCell(int row, int column, QTableWidgetItem *item)
{
    if (column < m_pTable->columnCount())
        m_pTable->setItem(row, column, item);
    else
        delete item;
}

template <typename Data, typename Table> void DMS_TurnPage_Plugin<Data, Table>::showTotalPages()
{
    m_pTotalLabel->setText(QStringLiteral("/ %1").arg(m_totalPages, 0, 10, QLatin1Char(' ')));
}

template <typename Data, typename Table>
void DMS_TurnPage_Plugin<Data, Table>::on_m_pFirstPagePB_clicked()
{
    if (m_currentPage == 1)
        return;
    m_currentPage = 1;
    showCurrentPage();
    Q_EMIT currentPageChanged();
    showTotalPages();
}

template <typename Data, typename Table>
void DMS_TurnPage_Plugin<Data, Table>::on_m_pPageUpPB_clicked()
{
    if (m_currentPage == 1) {
        showCurrentPage();
        return;
    }
    --m_currentPage;
    showCurrentPage();
    Q_EMIT currentPageChanged();
}

template <typename Data, typename Table>
void DMS_TurnPage_Plugin<Data, Table>::on_m_pPageDownPB_clicked()
{
    if (m_currentPage == m_totalPages) {
        showCurrentPage();
        return;
    }
    ++m_currentPage;
    showCurrentPage();
    Q_EMIT currentPageChanged();
}

template <typename Data, typename Table>
void DMS_TurnPage_Plugin<Data, Table>::on_m_pLastPagePB_clicked()
{
    if (m_currentPage == m_totalPages)
        return;
    m_pGotoPageLE->setText(QString::number(m_totalPages));
    // The rows held are still those of the page being left, so this count is
    // only right by chance; the refresh that the signal asks for sets it right.
    m_pTable->setRowCount(m_data.size() - PageSize * m_totalPages + PageSize);
    m_currentPage = m_totalPages;
    Q_EMIT currentPageChanged();
}

template <typename Data, typename Table>
void DMS_TurnPage_Plugin<Data, Table>::on_m_pGotoPageLE_editingFinished()
{
    // Leaving the field for a button finishes the editing too; only typing counts.
    if (!m_pGotoPageLE->hasFocus())
        return;
    const int page = m_pGotoPageLE->text().toInt();
    if (page > m_totalPages || page < 1) {
        refuseJump();
        return;
    }
    if (page == m_currentPage)
        return;
    m_currentPage = page;
    Q_EMIT currentPageChanged();
    m_pGotoPageLE->clearFocus();
}

template <typename Data, typename Table> void DMS_TurnPage_Plugin<Data, Table>::refuseJump()
{
    QMessageBox::warning(this, QStringLiteral("错误"),
                         QStringLiteral("跳转页码不可小于1或者超过总页数！"), QMessageBox::Ok);
    showCurrentPage();
}

/// Qt reports no finished editing for a field that its validator finds
/// incomplete, so Enter on a cleared field is taken here.
template <typename Data, typename Table>
bool DMS_TurnPage_Plugin<Data, Table>::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_pGotoPageLE && event->type() == QEvent::KeyPress &&
        !m_pGotoPageLE->hasAcceptableInput()) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            on_m_pGotoPageLE_editingFinished();
            return true;
        }
    }
    return Temp_Widget::eventFilter(watched, event);
}

} // namespace KODMS::UI
