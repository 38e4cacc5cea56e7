// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <memory>

class QTableWidget;

namespace KODMS::Tests {

/// Somebody who sits at a desk of their own and works with mouse and keys.
class DeskUser {
public:
    explicit DeskUser(std::unique_ptr<QWidget> desk);

    /// At a desk that belongs to somebody else, a host for example.
    explicit DeskUser(QWidget &desk) : m_desk(&desk) {}

    template <typename Control> Control *control(const char *name) const
    {
        return m_desk->findChild<Control *>(QLatin1String(name));
    }

    /// The desk as its class.
    template <typename Desk> Desk *desk() const { return qobject_cast<Desk *>(m_desk.data()); }

    QTableWidget *table() const;
    QString pageTotal() const;
    QStringList column(int column) const;

    void click(const char *button) const;
    void clickCell(int row, int column) const;
    void clickHeader(int column) const;

    /// Walks through a combo box by keys to the first item with this text.
    void pick(const char *combo, const QString &text) const;

    /// Selects these rows and no others, by clicks on their numbers; the last one
    /// becomes the current row.
    void selectRows(const QVector<int> &rows) const;

    /// The first row with this text in a column; -1 when there is none.
    int rowOf(int column, const QString &text) const { return this->column(column).indexOf(text); }

    QVector<int> selectedRows() const;

    /// Enters text as an input method does: all at once.
    void commit(const char *edit, const QString &text) const;

    /// Opens the cell's editor by a double click, types and presses Return.
    void typeInto(int row, int column, const QString &text) const;

private:
    std::unique_ptr<QWidget> m_own;
    QPointer<QWidget> m_desk;
};

} // namespace KODMS::Tests
