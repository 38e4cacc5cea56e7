// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/desk/DeskCases.h"

#include "desks/common/DMS_TurnPage_Plugin.h"
#include "desks/common/FlowRow.h"
#include "desks/common/JobColumns.h"
#include "desks/export/DMS_Export_Widget.h"

#include <QApplication>
#include <QEventLoop>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableWidget>
#include <QTimer>

#include <memory>
#include <stdexcept>

namespace KODMS::Bench {

namespace {

using UI::DMS_Export_Widget;
using Rows = QList<QList<QString>>;

/// Counts the paint events of a widget.
class PaintCount : public QObject {
public:
    explicit PaintCount(QWidget *widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        m_paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int paints() const { return m_paints; }

    /// Handles events until the widget has been painted `count` times.
    void waitFor(int count) const
    {
        QTimer deadline;
        deadline.setSingleShot(true);
        deadline.start(5000);
        while (m_paints < count && deadline.isActive())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (m_paints < count)
            throw std::runtime_error("the table was not repainted");
    }

private:
    int m_paints = 0;
};

QTableWidget *jobTable(const DMS_Export_Widget &desk)
{
    return desk.findChild<QTableWidget *>(QStringLiteral("m_pJobTableWidget"));
}

std::unique_ptr<DMS_Export_Widget> shownDesk()
{
    auto desk = std::make_unique<DMS_Export_Widget>(nullptr);
    desk->resize(1400, 1000);
    desk->show();
    QApplication::setActiveWindow(desk.get());
    const PaintCount paints(jobTable(*desk)->viewport());
    paints.waitFor(1);
    return desk;
}

/// A Latin letter comes as a key, anything else as an input method commits it.
void enter(QLineEdit *edit, QChar letter)
{
    if (letter.unicode() < 0x80) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
        QApplication::sendEvent(edit, &press);
        return;
    }
    QInputMethodEvent commit;
    commit.setCommitString(QString(letter));
    QApplication::sendEvent(edit, &commit);
}

Rows pageOfRows()
{
    Rows rows;
    for (int row = 0; row < 30; ++row) {
        DataLib::Model::Odbpp_Flow_View flow;
        flow.id = 100000 + row;
        flow.jobName = "A1B" + std::to_string(flow.id);
        flow.origJobName = "main board";
        flow.flowStatus = row % 4;
        flow.checkFlag = row % 3;
        flow.preCheckTime = flow.origUploadTime = "2026-01-02 08:15:00";
        flow.flowGuid = "0123456789abcdef0123456789abcdef";
        flow.preUserRealName = flow.preCheckUserRealName = "李晓东";
        flow.tips = "急单，请优先";
        flow.uuid = "0123456789abcdef0123456789abcdef.tgz";
        rows.append(UI::flowRow(flow));
    }
    return rows;
}

void fillBare(QTableWidget &table, const Rows &rows)
{
    table.setRowCount(rows.size());
    for (int row = 0; row < rows.size(); ++row)
        for (int column = 0; column < rows.at(row).size(); ++column)
            table.setItem(row, column, new QTableWidgetItem(rows.at(row).at(column)));
}

} // namespace

QVector<Measured> measureBuilding(int count)
{
    Measured built{QStringLiteral("building a desk, first page included"),
                   QStringLiteral("<= 50 ms")};
    Measured painted{QStringLiteral("the same, shown and painted"), QString()};
    for (int i = 0; i < count; ++i) {
        std::unique_ptr<DMS_Export_Widget> desk;
        built.watch.measure([&] { desk = std::make_unique<DMS_Export_Widget>(nullptr); });
        desk.reset();
        painted.watch.measure([&] { desk = shownDesk(); });
    }
    return {built, painted};
}

Measured measureFilling(int count)
{
    const Rows rows = pageOfRows();
    QWidget window;
    QTableWidget barTable(0, 18, &window);
    QTableWidget bareTable(0, 18, &window);
    UI::DMS_TurnPage_Plugin<Rows, QTableWidget *> bar(Rows(), &barTable, &window);
    barTable.blockSignals(true);
    bareTable.blockSignals(true);
    Measured filling{QStringLiteral("filling 30 rows x 18 columns"),
                     QStringLiteral("<= 1.2 x a bare loop of setItem")};
    Stopwatch bare;
    for (int i = 0; i < count; ++i) {
        barTable.setRowCount(0);
        bareTable.setRowCount(0);
        filling.watch.measure([&] { bar.setData(rows, 30, QString()); });
        bare.measure([&] { fillBare(bareTable, rows); });
    }
    filling.ratio = filling.watch.wallMedian() / bare.wallMedian();
    return filling;
}

QStringList termsOnDesk(int count, int length)
{
    const auto desk = shownDesk();
    auto *nextPage = desk->findChild<QPushButton *>(QStringLiteral("m_pPageDownPB"));
    QStringList terms;
    for (int page = 0; page < count && terms.size() < count; ++page) {
        for (int row = 0; row < jobTable(*desk)->rowCount() && terms.size() < count; ++row) {
            const QString term = jobTable(*desk)->item(row, UI::JobColumn::JobName)->text();
            if (!terms.contains(term.right(length)))
                terms << term.right(length);
        }
        nextPage->click();
    }
    return terms;
}

Measured measureKeystrokes(const QString &name, const char *edit, const QStringList &terms)
{
    const auto desk = shownDesk();
    auto *field = desk->findChild<QLineEdit *>(QLatin1String(edit));
    const PaintCount paints(jobTable(*desk)->viewport());
    field->setFocus();
    Measured keys{name, QStringLiteral("median <= 10 ms, p99 <= 25 ms")};
    for (const QString &term : terms) {
        field->setText(term.chopped(1));
        field->setCursorPosition(term.size());
        QApplication::processEvents();
        const int before = paints.paints();
        keys.watch.measure([&] {
            enter(field, term.back());
            paints.waitFor(before + 1);
        });
        keys.search.measure([&] {
            QMetaObject::invokeMethod(desk.get(), "updateExportJobTable", Qt::DirectConnection);
        });
    }
    return keys;
}

} // namespace KODMS::Bench
