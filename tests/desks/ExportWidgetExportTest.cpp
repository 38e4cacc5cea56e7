// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/BoxStory.h"
#include "tests/desks/DeskTest.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QPushButton>

using namespace KODMS::Tests;
using KODMS::UI::DMS_Export_Widget;

Q_DECLARE_METATYPE(QMessageBox::StandardButton)

/// The export of the selected jobs to the host and to the CAM side.
class ExportWidgetExportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init();

    void cleanup() { m_desk.reset(); }

    void withoutACurrentRowTheUserIsAskedToSelect();
    void theQuestion();
    void anyAnswerButYesStops_data();
    void anyAnswerButYesStops();
    void everySelectedJobInRowOrder();
    void aCellOutsideTheFirstColumnSelectsNothing();
    void anEmptySelectionStillSaysThatItIsDone();
    void theLastMessage();
    void theJobsAreThoseThatWereAskedAbout();
    void aDeskThatGoesDuringTheQuestionExportsNothing();
    void aDeskThatGoesDuringTheSignalStops();
    void nothingIsRefreshed();
    void anIdThatIsNoDecimalNumberIsZero_data();
    void anIdThatIsNoDecimalNumberIsZero();
    void theHiddenButtonLeadsHere();

private:
    void run() const { QMetaObject::invokeMethod(m_desk.get(), "on_m_pExportPB_Clicked"); }

    void select(const QVector<int> &rows) const;
    void tellSignals() const;

    std::unique_ptr<DMS_Export_Widget> m_desk;
};

namespace {

const QString Ask = QStringLiteral("box(\"确认导出选择的job？\")");
const QString Done = QStringLiteral("box(\"导出  成功\")");

QStringList handedOver(int id)
{
    const QString arguments = QStringLiteral("(\"A1B%1\", %2)").arg(100000 + id).arg(id);
    return {QStringLiteral("signal") + arguments,
            QStringLiteral("DMS_UICommon::sendemitCAMExportJobInfo") + arguments};
}

QString told(const QStringList &lines)
{
    return lines.join(QLatin1Char('\n'));
}

} // namespace

void ExportWidgetExportTest::init()
{
    FakeServices::instance().reset();
    answerWithFlows(4);
    m_desk = makeDesk({Right::Admin});
    tellSignals();
    FakeServices::instance().forgetCalls();
}

void ExportWidgetExportTest::tellSignals() const
{
    connect(m_desk.get(), &DMS_Export_Widget::emitExportJobInfo, m_desk.get(),
            [](const QString &job, int id) { FakeServices::instance().record("signal", job, id); });
}

/// The last one becomes the current row.
void ExportWidgetExportTest::select(const QVector<int> &rows) const
{
    auto *table = jobTable(*m_desk);
    for (int row : rows)
        table->selectionModel()->setCurrentIndex(
            table->model()->index(row, 1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void ExportWidgetExportTest::withoutACurrentRowTheUserIsAskedToSelect()
{
    const BoxStory boxes;
    run();
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"请选择一行数据\")"));
    const auto &box = boxes.probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_desk.get()));
}

void ExportWidgetExportTest::theQuestion()
{
    select({0});
    const BoxStory boxes;
    run();
    const auto &box = boxes.probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.text, QStringLiteral("确认导出选择的job？"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::Cancel);
    QCOMPARE(box.defaultButton, QMessageBox::NoButton);
}

void ExportWidgetExportTest::anyAnswerButYesStops_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::newRow("Cancel") << QMessageBox::Cancel;
    QTest::newRow("closed") << QMessageBox::NoButton;
}

void ExportWidgetExportTest::anyAnswerButYesStops()
{
    QFETCH(QMessageBox::StandardButton, answer);
    select({0, 1});
    BoxStory boxes;
    boxes.answer(answer);
    run();
    QCOMPARE(BoxStory::text(), Ask);
}

void ExportWidgetExportTest::everySelectedJobInRowOrder()
{
    select({3, 1});
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    run();
    QCOMPARE(BoxStory::text(),
             told(QStringList(Ask) + handedOver(2) + handedOver(4) + QStringList(Done)));
}

void ExportWidgetExportTest::aCellOutsideTheFirstColumnSelectsNothing()
{
    auto *table = jobTable(*m_desk);
    table->selectionModel()->setCurrentIndex(table->model()->index(0, 1),
                                             QItemSelectionModel::Select);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    run();
    QCOMPARE(BoxStory::text(), told({Ask, Done}));
}

void ExportWidgetExportTest::anEmptySelectionStillSaysThatItIsDone()
{
    select({1});
    jobTable(*m_desk)->clearSelection();
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    run();
    QCOMPARE(BoxStory::text(), told({Ask, Done}));
}

void ExportWidgetExportTest::theLastMessage()
{
    select({1});
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    run();
    const auto &box = boxes.probe.boxes().last();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.text, QStringLiteral("导出 ") + QStringLiteral(" 成功"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_desk.get()));
}

void ExportWidgetExportTest::theJobsAreThoseThatWereAskedAbout()
{
    select({1});
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    boxes.whileOpen("确认导出选择的job？", [this] {
        answerWithFlows(1);
        FakeServices::instance().raiseRefreshExportJobTable();
        jobTable(*m_desk)->selectRow(0);
        FakeServices::instance().forgetCalls();
    });
    run();
    QCOMPARE(BoxStory::text(), told(handedOver(2) + QStringList(Done)));
}

void ExportWidgetExportTest::aDeskThatGoesDuringTheQuestionExportsNothing()
{
    select({1});
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    boxes.whileOpen("确认导出选择的job？", [this] { m_desk.reset(); });
    run();
    QCOMPARE(BoxStory::text(), Ask);
}

void ExportWidgetExportTest::aDeskThatGoesDuringTheSignalStops()
{
    select({0, 1});
    QObject host;
    connect(m_desk.get(), &DMS_Export_Widget::emitExportJobInfo, &host, [this] { m_desk.reset(); });
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    run();
    QCOMPARE(BoxStory::text(), told(QStringList(Ask) + handedOver(1)));
}

void ExportWidgetExportTest::nothingIsRefreshed()
{
    select({0});
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    run();
    QCOMPARE(searches(), 0);
    QCOMPARE(jobTable(*m_desk)->currentRow(), 0);
}

void ExportWidgetExportTest::anIdThatIsNoDecimalNumberIsZero_data()
{
    QTest::addColumn<QString>("id");
    QTest::newRow("a word") << QStringLiteral("x");
    QTest::newRow("hexadecimal") << QStringLiteral("0x1f");
}

void ExportWidgetExportTest::anIdThatIsNoDecimalNumberIsZero()
{
    QFETCH(QString, id);
    select({2});
    jobTable(*m_desk)->blockSignals(true);
    jobTable(*m_desk)->item(2, 0)->setText(id);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    run();
    QVERIFY(BoxStory::text().contains(QStringLiteral("signal(\"A1B100003\", 0)")));
}

void ExportWidgetExportTest::theHiddenButtonLeadsHere()
{
    select({0});
    const BoxStory boxes;
    control<QPushButton>(*m_desk, "m_pExportPB")->click();
    QCOMPARE(BoxStory::text(), Ask);
}

KODMS_TEST_MAIN(ExportWidgetExportTest, QApplication)
#include "ExportWidgetExportTest.moc"
