// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_JobCheck_Widget.h"
#include "tests/desks/BoxStory.h"
#include "tests/desks/DeskTest.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QPushButton>

using namespace KODMS::Tests;
using KODMS::DataLib::Model::Odbpp_Questions;
using KODMS::Fakes::Call;
using KODMS::UI::DMS_JobCheck_Widget;

/// The windows in which a question is raised and viewed.
class ExportWidgetAskingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init();

    void cleanup() { m_desk.reset(); }

    void raisingNeedsACurrentJob();
    void theFirstQuestionMakesItsWindow();
    void theNextQuestionTurnsTheSameWindow();
    void aClosedWindowComesBack();
    void raisingGoesByTheCurrentRowNotTheSelection();
    void raisingRefreshesNothing();
    void aWindowThatIsGoneIsMadeAnew();
    void viewingNeedsACurrentQuestion();
    void theFirstViewMakesItsWindow();
    void theNextViewTurnsTheSameWindow();
    void aDoubleClickViewsInTheSameWindow();
    void viewingNeedsNoCurrentJob();
    void theTwoWindowsAreDifferentOnes();
    void aWindowThatGoesWhileItLoadsIsNotShown();
    void aDeskThatGoesWhileItLoadsIsNotTouched();
    void theWindowsGoWithTheDesk();
    void whoHasTheButtons_data();
    void whoHasTheButtons();

private:
    void show(std::initializer_list<Right> rights);

    void press(const char *button) const { control<QPushButton>(*m_desk, button)->click(); }

    void create() const { press("m_pCreateQuestionPB"); }

    void view() const { press("m_pViewQuestionPB"); }

    /// What happened since, and nothing of it twice.
    static QString story()
    {
        const QString lines = BoxStory::text();
        FakeServices::instance().forgetCalls();
        return lines;
    }

    static DMS_JobCheck_Widget *window(int index)
    {
        const auto &windows = FakeServices::instance().windows;
        return index < windows.size()
                   ? qobject_cast<DMS_JobCheck_Widget *>(windows.at(index).window.data())
                   : nullptr;
    }

    std::unique_ptr<KODMS::UI::DMS_Export_Widget> m_desk;
};

namespace {

QString made(int id, const char *mode)
{
    return QStringLiteral(
               "DMS_JobCheck_Widget::DMS_JobCheck_Widget(%1, %2, KODMS::UI::DMS_Export_Widget)\n")
        .arg(id)
        .arg(QLatin1String(mode));
}

QString loaded(int id)
{
    return QStringLiteral("DMS_JobCheck_Widget::getQuestionData(%1)\n").arg(id);
}

QString shown(int id)
{
    return QStringLiteral("DMS_JobCheck_Widget::setVisible(true, %1)").arg(id);
}

} // namespace

void ExportWidgetAskingTest::init()
{
    FakeServices::instance().reset();
    FakeServices::instance().setUser(42);
    Odbpp_Questions first;
    first.id = 11;
    Odbpp_Questions second;
    second.id = 12;
    FakeServices::instance().questions.always({{first, second}});
    answerWithFlows(3);
    show({Right::CheckAuthority});
}

/// With the questions of the first job listed and no current question.
void ExportWidgetAskingTest::show(std::initializer_list<Right> rights)
{
    FakeServices::instance().rights.clear();
    m_desk = makeDesk(rights);
    jobTable(*m_desk)->setCurrentCell(0, 1);
    QMetaObject::invokeMethod(m_desk.get(), "on_m_pJobTableWidget_ItemClicked",
                              Q_ARG(QTableWidgetItem *, nullptr));
    FakeServices::instance().forgetCalls();
}

void ExportWidgetAskingTest::raisingNeedsACurrentJob()
{
    control<QPushButton>(*m_desk, "m_pRefreshPB")->click();
    FakeServices::instance().forgetCalls();
    const BoxStory boxes;
    create();
    QCOMPARE(story(), QStringLiteral("box(\"请选择一个料号\")"));
    const auto &box = boxes.probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_desk.get()));
}

void ExportWidgetAskingTest::theFirstQuestionMakesItsWindow()
{
    jobTable(*m_desk)->setCurrentCell(1, 1);
    const BoxStory boxes;
    create();
    QCOMPARE(story(), made(2, "false") + shown(2));
    QCOMPARE(window(0)->parentWidget(), m_desk.get());
    QVERIFY(window(0)->isVisible());
}

void ExportWidgetAskingTest::theNextQuestionTurnsTheSameWindow()
{
    create();
    story();
    jobTable(*m_desk)->setCurrentCell(2, 1);
    create();
    QCOMPARE(story(), shown(3)); // told the flow before it is shown
    QCOMPARE(FakeServices::instance().windows.size(), 1);
    QCOMPARE(window(0)->m_id, 3);
}

void ExportWidgetAskingTest::aClosedWindowComesBack()
{
    create();
    window(0)->close();
    story();
    create();
    QCOMPARE(story(), shown(1));
    QVERIFY(window(0)->isVisible());
}

void ExportWidgetAskingTest::raisingGoesByTheCurrentRowNotTheSelection()
{
    jobTable(*m_desk)->setCurrentCell(1, 1);
    jobTable(*m_desk)->clearSelection();
    create();
    QCOMPARE(story(), made(2, "false") + shown(2));
}

void ExportWidgetAskingTest::raisingRefreshesNothing()
{
    create();
    QCOMPARE(searches(), 0);
    QCOMPARE(FakeServices::instance().count("DMS_UICommon::emitGobalSingal"), 0);
    QCOMPARE(FakeServices::instance().count("Odbpp_QuestionsBll::select"), 0);
    QCOMPARE(questionTable(*m_desk)->rowCount(), 2);
}

/// Signing out deletes it.
void ExportWidgetAskingTest::aWindowThatIsGoneIsMadeAnew()
{
    create();
    questionTable(*m_desk)->setCurrentCell(0, 1);
    view();
    delete window(0);
    delete window(1);
    story();
    create();
    QCOMPARE(story(), made(1, "false") + shown(1));
    view();
    QCOMPARE(story(), made(11, "true") + loaded(11) + shown(11));
}

void ExportWidgetAskingTest::viewingNeedsACurrentQuestion()
{
    QCOMPARE(questionTable(*m_desk)->currentRow(), -1);
    const BoxStory boxes;
    view();
    QCOMPARE(story(), QStringLiteral("box(\"请选择一个问题项\")"));
    const auto &box = boxes.probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_desk.get()));
}

void ExportWidgetAskingTest::theFirstViewMakesItsWindow()
{
    questionTable(*m_desk)->setCurrentCell(1, 1);
    const BoxStory boxes;
    view();
    QCOMPARE(story(), made(12, "true") + loaded(12) + shown(12));
    QCOMPARE(window(0)->parentWidget(), m_desk.get());
    QVERIFY(window(0)->isVisible());
}

void ExportWidgetAskingTest::theNextViewTurnsTheSameWindow()
{
    questionTable(*m_desk)->setCurrentCell(1, 1);
    view();
    questionTable(*m_desk)->setCurrentCell(0, 1);
    story();
    view();
    QCOMPARE(story(), loaded(11) + shown(11));
    QCOMPARE(FakeServices::instance().windows.size(), 1);
}

void ExportWidgetAskingTest::aDoubleClickViewsInTheSameWindow()
{
    questionTable(*m_desk)->setCurrentCell(0, 1);
    view();
    story();
    auto *table = questionTable(*m_desk);
    const QPoint cell = table->visualItemRect(table->item(1, 2)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    QCOMPARE(story(), loaded(12) + shown(12));
    QCOMPARE(FakeServices::instance().windows.size(), 1);
}

void ExportWidgetAskingTest::viewingNeedsNoCurrentJob()
{
    control<QPushButton>(*m_desk, "m_pRefreshPB")->click();
    questionTable(*m_desk)->setCurrentCell(0, 1);
    FakeServices::instance().forgetCalls();
    const BoxStory boxes;
    view();
    QCOMPARE(story(), made(11, "true") + loaded(11) + shown(11));
}

void ExportWidgetAskingTest::theTwoWindowsAreDifferentOnes()
{
    questionTable(*m_desk)->setCurrentCell(0, 1);
    create();
    view();
    QCOMPARE(FakeServices::instance().windows.size(), 2);
    QCOMPARE(window(0)->m_id, 1);
    QCOMPARE(window(1)->m_id, 11);
}

void ExportWidgetAskingTest::aWindowThatGoesWhileItLoadsIsNotShown()
{
    questionTable(*m_desk)->setCurrentCell(0, 1);
    FakeServices::instance()
        .result("DMS_JobCheck_Widget::getQuestionData")
        .compute([](const Call &) {
            delete window(0);
            return 1;
        });
    view();
    QCOMPARE(story(), made(11, "true") + loaded(11).trimmed());
}

void ExportWidgetAskingTest::aDeskThatGoesWhileItLoadsIsNotTouched()
{
    questionTable(*m_desk)->setCurrentCell(0, 1);
    view();
    story();
    FakeServices::instance()
        .result("DMS_JobCheck_Widget::getQuestionData")
        .compute([this](const Call &) {
            m_desk.reset();
            return 1;
        });
    QMetaObject::invokeMethod(m_desk.get(), "on_m_pViewQuestionPB_clicked");
    QVERIFY(!m_desk);
    QCOMPARE(story(), loaded(11).trimmed());
}

void ExportWidgetAskingTest::theWindowsGoWithTheDesk()
{
    questionTable(*m_desk)->setCurrentCell(0, 1);
    create();
    view();
    m_desk.reset();
    QVERIFY(!window(0));
    QVERIFY(!window(1));
}

void ExportWidgetAskingTest::whoHasTheButtons_data()
{
    QTest::addColumn<QVector<Right>>("rights");
    QTest::addColumn<bool>("mayRaise");
    const auto row = [](const char *title, const QVector<Right> &rights, bool mayRaise) {
        QTest::newRow(title) << rights << mayRaise;
    };
    row("administrator", {Right::Admin}, true);
    row("reviewer", {Right::CheckAuthority}, true);
    row("nobody in particular", {}, false);
    row("everything else",
        {Right::PreProcess, Right::PreCheckAssign, Right::TestAdmin, Right::OrigFileUpdate,
         Right::OrigFileAssign, Right::ShowCompanyName},
        false);
}

void ExportWidgetAskingTest::whoHasTheButtons()
{
    QFETCH(QVector<Right>, rights);
    QFETCH(bool, mayRaise);
    show({});
    for (const Right right : qAsConst(rights))
        FakeServices::instance().grant(right);
    m_desk = std::make_unique<KODMS::UI::DMS_Export_Widget>(nullptr);
    for (const char *name : {"m_pCreateQuestionPB", "m_pJobPassPB", "m_pJobUnpassPB"})
        QCOMPARE(control(*m_desk, name) != nullptr, mayRaise);
    QVERIFY(control(*m_desk, "m_pViewQuestionPB"));
    QVERIFY(control(*m_desk, "m_pResolveQuestionPB"));
}

KODMS_TEST_MAIN(ExportWidgetAskingTest, QApplication)
#include "ExportWidgetAskingTest.moc"
