// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/common/DMS_TurnPage_Plugin.h"

#include <QApplication>
#include <QTest>

namespace KODMS::Tests {

using Rows = QList<QList<QString>>;
using Bar = UI::DMS_TurnPage_Plugin<Rows, QTableWidget *>;

/// A page of rows of two cells.
inline Rows someRows(int count)
{
    Rows rows;
    for (int row = 0; row < count; ++row)
        rows.append({QStringLiteral("id%1").arg(row), QStringLiteral("name%1").arg(row)});
    return rows;
}

/// A window with a table of two columns, another field, and the bar.
class BarWindow {
protected:
    void open()
    {
        m_window = new QWidget;
        auto *layout = new QVBoxLayout(m_window);
        m_table = new QTableWidget(0, 2, m_window);
        m_other = new QLineEdit(m_window);
        m_bar = new Bar(Rows(), m_table, m_window);
        layout->addWidget(m_table);
        layout->addWidget(m_other);
        layout->addWidget(m_bar);
        m_window->show();
        QApplication::setActiveWindow(m_window);
    }

    void close() { delete m_window; }

    template <typename Control> Control *find(const char *name) const
    {
        return m_bar->findChild<Control *>(QLatin1String(name));
    }

    QPushButton *button(const char *name) const { return find<QPushButton>(name); }

    QLineEdit *field() const { return find<QLineEdit>("m_pGotoPageLE"); }

    QString total() const { return find<QLabel>("m_pTotalLabel")->text(); }

    /// The page that the bar would ask for.
    int currentPage()
    {
        std::vector<DataLib::Model::DB_Search> list(1);
        m_bar->setSearchPage(list, false);
        return std::stoi(list.front().pageStart) / 30 + 1;
    }

    void click(const char *name) { QTest::mouseClick(button(name), Qt::LeftButton); }

    /// Replaces the page number as a user does.
    void type(const QString &text, Qt::Key end = Qt::Key_Return)
    {
        field()->setFocus();
        field()->selectAll();
        if (text.isEmpty())
            QTest::keyClick(field(), Qt::Key_Delete);
        QTest::keyClicks(field(), text);
        QTest::keyClick(field(), end);
    }

    /// Five pages of 30 rows, page `page` shown.
    void showPage(int page)
    {
        m_bar->setData(someRows(30), 150, QString());
        if (page == 1)
            return;
        type(QString::number(page));
        m_bar->setData(someRows(30), 150, QString());
    }

    QWidget *m_window = nullptr;
    QTableWidget *m_table = nullptr;
    QLineEdit *m_other = nullptr;
    Bar *m_bar = nullptr;
};

} // namespace KODMS::Tests
