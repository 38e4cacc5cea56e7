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
using KODMS::Fakes::Call;
using KODMS::Fakes::MessageBoxProbe;
using Buttons = QMessageBox::StandardButtons;
using Kind = AssignDesk::Kind;

Q_DECLARE_METATYPE(QMessageBox::StandardButton)

/// The assign button on the two desks side by side: who may, and what is written.
class AssignmentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void whoMayAssign_data();
    void whoMayAssign();

    void withoutACurrentRowARowIsAskedFor_data() { AssignDesk::addBoth(); }

    void withoutACurrentRowARowIsAskedFor();

    void theRightIsCheckedBeforeTheSelection_data() { AssignDesk::addBoth(); }

    void theRightIsCheckedBeforeTheSelection();

    void oneFreeRow_data() { AssignDesk::addBoth(); }

    void oneFreeRow();

    void thePersonPickedGetsIt_data() { AssignDesk::addBoth(); }

    void thePersonPickedGetsIt();

    void oneQuestionForAllThatAreTaken_data() { AssignDesk::addBoth(); }

    void oneQuestionForAllThatAreTaken();
    void anyAnswerButYesStops_data();
    void anyAnswerButYesStops();

    void aTakenRowThatIsNotSelectedAsksNothing_data() { AssignDesk::addBoth(); }

    void aTakenRowThatIsNotSelectedAsksNothing();

    void onlyTheFirstColumnSelects_data() { AssignDesk::addBoth(); }

    void onlyTheFirstColumnSelects();

    void aRowWithoutCellsIsNotSelected_data() { AssignDesk::addBoth(); }

    void aRowWithoutCellsIsNotSelected();

    void theUserIsAskedForWithEachRow_data() { AssignDesk::addBoth(); }

    void theUserIsAskedForWithEachRow();

    void aRefusedRowStopsNoOther_data() { AssignDesk::addBoth(); }

    void aRefusedRowStopsNoOther();
};

namespace {

FakeServices &services()
{
    return FakeServices::instance();
}

} // namespace

void AssignmentTest::whoMayAssign_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QVector<Right>>("rights");
    QTest::addColumn<bool>("may");
    for (const Kind kind : {Kind::JobFlows, Kind::OrigFiles}) {
        const Right own = kind == Kind::JobFlows ? Right::PreCheckAssign : Right::OrigFileAssign;
        QVector<QVector<Right>> sets{{}};
        QVector<Right> others;
        for (const Right right : {Right::Admin, Right::PreProcess, Right::PreCheckAssign,
                                  Right::TestAdmin, Right::CheckAuthority, Right::OrigFileUpdate,
                                  Right::OrigFileAssign, Right::ShowCompanyName}) {
            sets << QVector<Right>{right};
            if (right != Right::Admin && right != own)
                others << right;
        }
        sets << others;
        for (const QVector<Right> &rights : qAsConst(sets))
            QTest::addRow("%s: %s", qPrintable(AssignDesk::nameOf(kind)),
                          qPrintable(rightNames(rights)))
                << kind << rights << (rights.contains(Right::Admin) || rights.contains(own));
    }
}

void AssignmentTest::whoMayAssign()
{
    QFETCH(Kind, kind);
    QFETCH(QVector<Right>, rights);
    QFETCH(bool, may);
    const AssignDesk desk(kind);
    desk.select({1}, 1);
    services().rights = {rights.cbegin(), rights.cend()};
    MessageBoxProbe probe;
    desk.press();
    QCOMPARE(probe.texts(), may ? QStringList() : QStringList(AssignText::NoRight));
    QCOMPARE(AssignDesk::written(), may ? QStringList(desk.firstTime(2)) : QStringList());
    if (may)
        return;
    QCOMPARE(desk.selectedRows(), QVector<int>{1});
    QVERIFY(services().operations().isEmpty());
    const auto &box = probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, Buttons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), desk.widget());
}

void AssignmentTest::withoutACurrentRowARowIsAskedFor()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 4, {3});
    desk.select({2}, -1);
    QCOMPARE(desk.table()->currentRow(), -1);
    QCOMPARE(desk.selectedRows(), QVector<int>{2});
    MessageBoxProbe probe;
    desk.press();
    QCOMPARE(probe.texts(), QStringList(AssignText::SelectRow));
    QCOMPARE(probe.boxes().first().buttons, Buttons(QMessageBox::Ok));
    QVERIFY(services().operations().isEmpty());
}

void AssignmentTest::theRightIsCheckedBeforeTheSelection()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 0);
    services().rights.clear();
    MessageBoxProbe probe;
    desk.press();
    QCOMPARE(probe.texts(), QStringList(AssignText::NoRight));
}

void AssignmentTest::oneFreeRow()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind);
    desk.select({2}, 2);
    MessageBoxProbe probe;
    desk.press();
    QCOMPARE(probe.count(), 0);
    QCOMPARE(AssignDesk::written(), QStringList(desk.firstTime(3)));
    QCOMPARE(desk.searches(), 1);
    QCOMPARE(services().operations().size(), 2); // and nothing else
    QCOMPARE(desk.table()->rowCount(), 4);
}

void AssignmentTest::thePersonPickedGetsIt()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 4, {4});
    auto *combo = desk.control<QComboBox>("m_pAssignerCMB");
    QCOMPARE(combo->count(), 2);
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Down);
    QCOMPARE(combo->currentIndex(), 1);
    desk.select({0, 3}, 0);
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    desk.press();
    QCOMPARE(AssignDesk::written(), QStringList({desk.firstTime(1, 1), desk.again(4, 1)}));
    QCOMPARE(combo->currentIndex(), 1);
}

void AssignmentTest::oneQuestionForAllThatAreTaken()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 5, {2, 4, 5});
    desk.select({1, 2, 3}, 1);
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    desk.press();
    QCOMPARE(probe.texts(), QStringList(AssignText::Reassign));
    const auto &box = probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(box.defaultButton, QMessageBox::NoButton);
    QCOMPARE(box.parent.data(), desk.widget());
    QCOMPARE(AssignDesk::written(), QStringList({desk.again(2), desk.firstTime(3), desk.again(4)}));
    QCOMPARE(desk.searches(), 1);
}

void AssignmentTest::anyAnswerButYesStops_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    for (const Kind kind : {Kind::JobFlows, Kind::OrigFiles}) {
        QTest::addRow("%s: no", qPrintable(AssignDesk::nameOf(kind))) << kind << QMessageBox::No;
        QTest::addRow("%s: closed", qPrintable(AssignDesk::nameOf(kind)))
            << kind << QMessageBox::NoButton;
    }
}

void AssignmentTest::anyAnswerButYesStops()
{
    QFETCH(Kind, kind);
    QFETCH(QMessageBox::StandardButton, answer);
    const AssignDesk desk(kind, 4, {3});
    desk.select({0, 1, 2}, 1);
    const QTableWidgetItem *const item = desk.table()->item(1, 0);
    MessageBoxProbe probe;
    probe.answer(answer);
    desk.press();
    QCOMPARE(probe.texts(), QStringList(AssignText::Reassign));
    QVERIFY(services().operations().isEmpty());
    QCOMPARE(desk.selectedRows(), QVector<int>({0, 1, 2}));
    QCOMPARE(desk.table()->currentRow(), 1);
    QCOMPARE(desk.table()->item(1, 0), item);
}

void AssignmentTest::aTakenRowThatIsNotSelectedAsksNothing()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 4, {1, 3, 4});
    desk.select({1}, 2);
    MessageBoxProbe probe;
    desk.press();
    QCOMPARE(probe.count(), 0);
    QCOMPARE(AssignDesk::written(), QStringList(desk.firstTime(2)));
}

void AssignmentTest::onlyTheFirstColumnSelects()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 4, {2});
    desk.select({0, 1}, 1);
    desk.table()->item(1, 0)->setSelected(false);
    desk.table()->item(2, 0)->setSelected(true);
    QVERIFY(desk.table()->item(1, 1)->isSelected());
    MessageBoxProbe probe;
    desk.press();
    QCOMPARE(probe.count(), 0);
    QCOMPARE(AssignDesk::written(), QStringList({desk.firstTime(1), desk.firstTime(3)}));
}

void AssignmentTest::aRowWithoutCellsIsNotSelected()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 4, {2});
    desk.select({0, 1, 2}, 0);
    delete desk.table()->takeItem(1, 0);
    MessageBoxProbe probe;
    desk.press();
    QCOMPARE(probe.count(), 0);
    QCOMPARE(AssignDesk::written(), QStringList({desk.firstTime(1), desk.firstTime(3)}));
}

void AssignmentTest::theUserIsAskedForWithEachRow()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 4, {3});
    const auto nextUser = [](const Call &) {
        services().setUser(services().user.id + 1);
        return 1;
    };
    for (const char *operation : {"Kodms_PreCheckAssignBll::s_PreCheckAssign",
                                  "Kodms_PreCheckAssignBll::Update_PreCheckAssign",
                                  "Kodms_OrigFileAssignBll::AssignOrigFile",
                                  "Kodms_OrigFileAssignBll::AssignOrigFileUpdate"})
        services().result(operation).compute(nextUser);
    desk.select({1, 2, 3}, 1);
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    desk.press();
    QCOMPARE(AssignDesk::written(), QStringList({desk.firstTime(2, 0, AssignDesk::Me),
                                                 desk.again(3, 0, AssignDesk::Me + 1),
                                                 desk.firstTime(4, 0, AssignDesk::Me + 2)}));
}

void AssignmentTest::aRefusedRowStopsNoOther()
{
    QFETCH(Kind, kind);
    const AssignDesk desk(kind, 4, {1});
    AssignDesk::refuseAll();
    desk.select({0, 1, 2, 3}, 3);
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    desk.press();
    QCOMPARE(probe.count(), 1);
    QCOMPARE(AssignDesk::written(),
             QStringList({desk.again(1), desk.firstTime(2), desk.firstTime(3), desk.firstTime(4)}));
    QCOMPARE(desk.searches(), 1);
}

KODMS_TEST_MAIN(AssignmentTest, QApplication)
#include "AssignmentTest.moc"
