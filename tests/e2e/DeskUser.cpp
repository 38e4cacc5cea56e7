// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/DeskUser.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>

#include <utility>

namespace KODMS::Tests {

DeskUser::DeskUser(std::unique_ptr<QWidget> desk) : m_own(std::move(desk)), m_desk(m_own.get())
{
    m_desk->resize(1200, 800);
    m_desk->show();
    QApplication::setActiveWindow(m_desk);
}

QTableWidget *DeskUser::table() const
{
    return control<QTableWidget>("m_pJobTableWidget");
}

QString DeskUser::pageTotal() const
{
    return control<QLabel>("m_pTotalLabel")->text();
}

QStringList DeskUser::column(int column) const
{
    QStringList texts;
    for (int row = 0; row < table()->rowCount(); ++row)
        texts << table()->item(row, column)->text();
    return texts;
}

void DeskUser::click(const char *button) const
{
    QTest::mouseClick(control<QWidget>(button), Qt::LeftButton);
}

void DeskUser::clickCell(int row, int column) const
{
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      table()->visualItemRect(table()->item(row, column)).center());
}

void DeskUser::clickHeader(int column) const
{
    auto *header = table()->horizontalHeader();
    const QPoint middle(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                        header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, middle);
}

void DeskUser::pick(const char *name, const QString &text) const
{
    auto *combo = control<QComboBox>(name);
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Home);
    while (combo->currentText() != text && combo->currentIndex() + 1 < combo->count())
        QTest::keyClick(combo, Qt::Key_Down);
    QCOMPARE(combo->currentText(), text);
}

void DeskUser::selectRows(const QVector<int> &rows) const
{
    auto *header = table()->verticalHeader();
    for (int row : rows) {
        table()->scrollToItem(table()->item(row, 1));
        const QPoint middle(header->width() / 2,
                            header->sectionViewportPosition(row) + header->sectionSize(row) / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton,
                          row == rows.first() ? Qt::NoModifier : Qt::ControlModifier, middle);
    }
}

QVector<int> DeskUser::selectedRows() const
{
    QVector<int> rows;
    for (int row = 0; row < table()->rowCount(); ++row)
        if (table()->item(row, 0)->isSelected())
            rows << row;
    return rows;
}

void DeskUser::commit(const char *edit, const QString &text) const
{
    auto *field = control<QLineEdit>(edit);
    field->setFocus();
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(field, &event);
}

void DeskUser::typeInto(int row, int column, const QString &text) const
{
    const QPoint cell = table()->visualItemRect(table()->item(row, column)).center();
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    QTest::mouseDClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    auto *editor = table()->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!table()->viewport()->findChild<QLineEdit *>());
}

} // namespace KODMS::Tests
