// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/RefreshMoment.h"

#include "services/api/LiveChanges.h"

#include <QApplication>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QTableWidget>

#include <algorithm>

namespace KODMS::Host {

namespace {

bool isOtherWindow(const QWidget &widget, const QWidget &window)
{
    if (&widget == &window || !widget.isVisible())
        return false;
    const Qt::WindowType type = widget.windowType();
    return type == Qt::Window || type == Qt::Dialog || type == Qt::Sheet;
}

bool hasOtherWindow(const QWidget &window)
{
    if (QApplication::activeModalWidget() || QApplication::activePopupWidget())
        return true;
    const auto all = QApplication::topLevelWidgets();
    return std::any_of(all.cbegin(), all.cend(),
                       [&window](const QWidget *widget) { return isOtherWindow(*widget, window); });
}

/// An editor of a cell is a child of the table's viewport, and gone when it is closed.
bool isInUse(const QTableWidget &table)
{
    const auto editors =
        table.viewport()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    return table.selectionModel()->hasSelection() ||
           std::any_of(editors.cbegin(), editors.cend(),
                       [](const QWidget *editor) { return editor->isVisible(); });
}

/// A refresh writes the number of the page that is shown over what is being typed.
bool isTypingPage()
{
    const auto *field = qobject_cast<const QLineEdit *>(QApplication::focusWidget());
    return field && field->objectName() == QLatin1String("m_pGotoPageLE") && field->isModified();
}

} // namespace

bool RefreshMoment::isNow(const QWidget &window, const QWidget &desks)
{
    if (Services::LiveChanges::isWorking() || QGuiApplication::mouseButtons() != Qt::NoButton ||
        hasOtherWindow(window) || isTypingPage())
        return false;
    const auto tables = desks.findChildren<QTableWidget *>();
    return std::none_of(tables.cbegin(), tables.cend(),
                        [](const QTableWidget *table) { return isInUse(*table); });
}

} // namespace KODMS::Host
