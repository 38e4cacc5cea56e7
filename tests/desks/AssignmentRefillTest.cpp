// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/AssignDesk.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTimer>

using namespace KODMS::Tests;
using KODMS::Fakes::MessageBoxProbe;
using Kind = AssignDesk::Kind;

/// The assign button on the two desks side by side: what becomes of the table.
class AssignmentRefillTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void theCurrentRowIsFoundAgain_data() { AssignDesk::addBoth(); }

    void theCurrentRowIsFoundAgain();

    void withoutASelectionTheTableIsStillReloaded_data() { AssignDesk::addBoth(); }

    void withoutASelectionTheTableIsStillReloaded();

    void aRowThatIsGoneSelectsNothing_data() { AssignDesk::addBoth(); }

    void aRowThatIsGoneSelectsNothing();

    void pageAndSearchTextStay_data() { AssignDesk::addBoth(); }

    void pageAndSearchTextStay();
    void withNobodyToPickNothingHappens_data();
    void withNobodyToPickNothingHappens();

    void aRefreshDuringTheQuestionLeavesNothingSelected_data() { AssignDesk::addBoth(); }

    void aRefreshDuringTheQuestionLeavesNothingSelected();
    void aDeskThatIsClosedDuringABox_data();
    void aDeskThatIsClosedDuringABox();
};

namespace {

FakeServices &services()
{
    return FakeServices::instance();
}

} // namespace

void AssignmentRefillTest::theCurrentRowIsFoundAgain()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind);
    desk.select({0, 1}, 2);
    desk.press();
    QCOMPARE(AssignDesk::written(), QStringList({desk.firstTime(1), desk.firstTime(2)}));
    QCOMPARE(desk.selectedRows(), QVector<int>{2});
    QCOMPARE(desk.table()->currentRow(), 2);
    desk.refreshFromElsewhere();
    QCOMPARE(desk.selectedRows(), QVector<int>());
    QCOMPARE(desk.table()->rowCount(), 4);
}

void AssignmentRefillTest::withoutASelectionTheTableIsStillReloaded()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 4, {2});
    desk.select({}, 1);
    MessageBoxProbe probe;
    desk.press();
    QCOMPARE(probe.count(), 0);
    QVERIFY(AssignDesk::written().isEmpty());
    QCOMPARE(desk.searches(), 1);
    QCOMPARE(desk.selectedRows(), QVector<int>{1});
}

void AssignmentRefillTest::aRowThatIsGoneSelectsNothing()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind);
    desk.select({3}, 3);
    if (kind == Kind::JobFlows)
        answerWithFlows(3);
    else
        answerWithFiles(3);
    desk.press();
    QCOMPARE(AssignDesk::written(), QStringList(desk.firstTime(4)));
    QCOMPARE(desk.table()->rowCount(), 3);
    QCOMPARE(desk.selectedRows(), QVector<int>());
}

void AssignmentRefillTest::pageAndSearchTextStay()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 70);
    const char *const field = kind == Kind::JobFlows ? "m_pJobFilterLE" : "m_pFilterLE";
    QTest::keyClicks(desk.control<QLineEdit>(field), QStringLiteral("b"));
    QTest::mouseClick(desk.control<QPushButton>("m_pPageDownPB"), Qt::LeftButton);
    desk.select({4}, 4);
    services().forgetCalls();
    desk.press();
    QCOMPARE(AssignDesk::written(), QStringList(desk.firstTime(35)));
    QCOMPARE(desk.searches(), 1);
    const auto list = kind == Kind::JobFlows ? conditions() : fileConditions();
    QCOMPARE(list.front().value, std::string("b"));
    QCOMPARE(list.back().pageStart, std::string("30"));
    QCOMPARE(desk.selectedRows(), QVector<int>{4});
}

void AssignmentRefillTest::withNobodyToPickNothingHappens_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("somebodyToPick");
    QTest::addColumn<bool>("taken");
    for (const Kind kind : {Kind::JobFlows, Kind::OrigFiles})
        for (const bool taken : {false, true}) {
            QTest::addRow("%s, nobody, %s row", qPrintable(AssignDesk::nameOf(kind)),
                          taken ? "taken" : "free")
                << kind << false << taken;
            QTest::addRow("%s, nobody picked, %s row", qPrintable(AssignDesk::nameOf(kind)),
                          taken ? "taken" : "free")
                << kind << true << taken;
        }
}

void AssignmentRefillTest::withNobodyToPickNothingHappens()
{
    QFETCH(Kind, kind);
    QFETCH(bool, somebodyToPick);
    QFETCH(bool, taken);
    if (!somebodyToPick)
        services().users.always({{{33, "neither", 3, 6}}, true});
    const AssignDesk desk(kind, 4, taken ? std::vector<int>{2} : std::vector<int>{});
    QCOMPARE(desk.control<QComboBox>("m_pAssignerCMB")->count(), somebodyToPick ? 2 : 0);
    desk.control<QComboBox>("m_pAssignerCMB")->setCurrentIndex(-1);
    desk.select({1}, 1);
    MessageBoxProbe probe;
    if (taken)
        probe.answer(QMessageBox::Yes);
    desk.press();
    QCOMPARE(probe.texts(), taken ? QStringList(AssignText::Reassign) : QStringList());
    QVERIFY(services().operations().isEmpty());
    QCOMPARE(desk.selectedRows(), QVector<int>{1});

    services().rights.clear();
    desk.press();
    QCOMPARE(probe.texts().last(), AssignText::NoRight);
}

void AssignmentRefillTest::aRefreshDuringTheQuestionLeavesNothingSelected()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 4, {1});
    desk.select({0, 1}, 1);
    QTimer::singleShot(0, this, [&desk] { desk.refreshFromElsewhere(); });
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    desk.press();
    QCOMPARE(probe.count(), 1);
    QVERIFY(AssignDesk::written().isEmpty());
    QCOMPARE(desk.searches(), 2);
    QCOMPARE(desk.table()->rowCount(), 4);
    QCOMPARE(desk.selectedRows(), QVector<int>());
}

void AssignmentRefillTest::aDeskThatIsClosedDuringABox_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("box");
    for (const Kind kind : {Kind::JobFlows, Kind::OrigFiles})
        for (const QString &box :
             {AssignText::NoRight, AssignText::SelectRow, AssignText::Reassign})
            QTest::addRow("%s: %s", qPrintable(AssignDesk::nameOf(kind)), qPrintable(box))
                << kind << box;
}

void AssignmentRefillTest::aDeskThatIsClosedDuringABox()
{
    QFETCH(Kind, kind);
    QFETCH(QString, box);
    AssignDesk desk(kind, 4, {2});
    desk.select({1}, box == AssignText::SelectRow ? -1 : 1);
    if (box == AssignText::NoRight)
        services().rights.clear();
    QString shown;
    QTimer::singleShot(0, this, [&desk, &shown] {
        const auto *message = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        shown = message ? message->text() : QString();
        desk.close();
    });
    desk.control<QPushButton>("m_pAssignPB")->click();
    QCOMPARE(shown, box);
    QVERIFY(!desk.widget());
    QVERIFY(services().operations().isEmpty());
}

KODMS_TEST_MAIN(AssignmentRefillTest, QApplication)
#include "AssignmentRefillTest.moc"
