// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/OperationDesk.h"
#include "tests/desks/PrivateMember.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>

using namespace KODMS::Tests;
using KODMS::UI::Desk;
using KODMS::UI::DMS_Download_Widget;
using KODMS::UI::DMS_Export_Widget;

namespace KODMS::Tests {

template <typename Widget> struct RightCheck {
    using Type = bool (Widget::*)();
};

template struct OpenMember<RightCheck<DMS_Export_Widget>,
                           &DMS_Export_Widget::checkDownLoadSAuthority>;
template struct OpenMember<RightCheck<DMS_Download_Widget>,
                           &DMS_Download_Widget::checkDownLoadSAuthority>;

} // namespace KODMS::Tests

/// Who may download the selected rows.
class SelectionRightsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void whoMayHaveTheSelection_data();
    void whoMayHaveTheSelection();

    void withoutRowsNobodyIsRefused_data() { addDeskRows(); }

    void withoutRowsNobodyIsRefused();
    void theFirstForeignRowIsNamed_data();
    void theFirstForeignRowIsNamed();

    void onlySelectedRowsCount_data() { addDeskRows(); }

    void onlySelectedRowsCount();

    void theUserIsAskedForOnceASelectedRow_data() { addDeskRows(); }

    void theUserIsAskedForOnceASelectedRow();
    void anOwnerThatIsNoNumberIsNobody_data();
    void anOwnerThatIsNoNumberIsNobody();
};

namespace {

constexpr int Foreigner = DownloadUser + 1;

bool isAllowed(const OperationDesk &window)
{
    if (auto *desk = window.jobFlow())
        return (desk->*privateMember<RightCheck<DMS_Export_Widget>>)();
    return (window.origFile()->*privateMember<RightCheck<DMS_Download_Widget>>)();
}

QVector<JobRow> rowsOwnedBy(const QVector<int> &owners)
{
    QVector<JobRow> rows;
    for (const int owner : owners) {
        rows << jobRow(rows.size() + 1, QStringLiteral("tgz"));
        rows.last().owner = owner;
    }
    return rows;
}

QString nameOf(Desk desk, int number)
{
    return (desk == Desk::JobFlow ? QString() : QStringLiteral("board")) + QString::number(number);
}

} // namespace

void SelectionRightsTest::whoMayHaveTheSelection_data()
{
    QTest::addColumn<Right>("right");
    QTest::addColumn<bool>("jobFlow");
    QTest::addColumn<bool>("origFile");
    const auto row = [](Right right, bool jobFlow, bool origFile) {
        QTest::newRow(qPrintable(rightName(right))) << right << jobFlow << origFile;
    };
    row(Right::Admin, true, true);
    row(Right::OrigFileUpdate, false, true);
    for (const Right right : {Right::PreCheckAssign, Right::TestAdmin, Right::CheckAuthority,
                              Right::OrigFileAssign, Right::ShowCompanyName})
        row(right, false, false);
}

void SelectionRightsTest::whoMayHaveTheSelection()
{
    QFETCH(Right, right);
    QFETCH(bool, jobFlow);
    QFETCH(bool, origFile);
    for (const Desk desk : {Desk::JobFlow, Desk::OrigFile}) {
        FakeServices::instance().reset();
        const OperationDesk window(desk, rowsOwnedBy({Foreigner}), {Right::TestAdmin, right});
        window.select(0);
        KODMS::Fakes::MessageBoxProbe probe;
        const bool allowed = desk == Desk::JobFlow ? jobFlow : origFile;
        QCOMPARE(isAllowed(window), allowed);
        QCOMPARE(probe.count(), allowed ? 0 : 1);
        if (allowed)
            QCOMPARE(FakeServices::instance().count("DMS_StdCommon::getCurrentUser"), 0);
    }
}

void SelectionRightsTest::withoutRowsNobodyIsRefused()
{
    QFETCH(Desk, desk);
    const OperationDesk window(desk, {});
    QVERIFY(isAllowed(window));
}

void SelectionRightsTest::theFirstForeignRowIsNamed_data()
{
    QTest::addColumn<QVector<int>>("owners");
    QTest::addColumn<int>("named");
    QTest::newRow("all one's own") << QVector<int>{DownloadUser, DownloadUser} << 0;
    QTest::newRow("the second") << QVector<int>{DownloadUser, Foreigner, Foreigner} << 2;
    QTest::newRow("nobody's") << QVector<int>{0, Foreigner} << 1;
}

void SelectionRightsTest::theFirstForeignRowIsNamed()
{
    QFETCH(QVector<int>, owners);
    QFETCH(int, named);
    for (const Desk desk : {Desk::JobFlow, Desk::OrigFile}) {
        const OperationDesk window(desk, rowsOwnedBy(owners));
        window.select(0, owners.size() - 1);
        const KODMS::Fakes::MessageBoxProbe probe;
        QCOMPARE(isAllowed(window), named == 0);
        QCOMPARE(probe.count(), named == 0 ? 0 : 1);
        if (named == 0)
            continue;
        const auto box = probe.boxes().first();
        QCOMPARE(box.text, QStringLiteral("以下项你没有下载权限：") + nameOf(desk, named));
        QCOMPARE(box.title, QStringLiteral("Information"));
        QCOMPARE(box.icon, QMessageBox::Information);
        QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QCOMPARE(box.parent.data(), window.widget());
    }
}

void SelectionRightsTest::onlySelectedRowsCount()
{
    QFETCH(Desk, desk);
    const OperationDesk window(desk, rowsOwnedBy({Foreigner, DownloadUser, Foreigner}));
    const KODMS::Fakes::MessageBoxProbe probe;
    QVERIFY(isAllowed(window));
    window.select(1);
    window.table()->setSelectionBehavior(QAbstractItemView::SelectItems);
    window.table()->setRangeSelected({0, 1, 0, 15}, true);
    QVERIFY(isAllowed(window));
    QCOMPARE(probe.count(), 0);
    window.table()->setRangeSelected({0, 0, 0, 0}, true);
    QVERIFY(!isAllowed(window));
}

void SelectionRightsTest::theUserIsAskedForOnceASelectedRow()
{
    QFETCH(Desk, desk);
    const OperationDesk window(desk, rowsOwnedBy(QVector<int>(4, DownloadUser)));
    window.select(1, 3);
    FakeServices::instance().forgetCalls();
    QVERIFY(isAllowed(window));
    QCOMPARE(FakeServices::instance().count("DMS_StdCommon::getCurrentUser"), 3);
}

void SelectionRightsTest::anOwnerThatIsNoNumberIsNobody_data()
{
    QTest::addColumn<QString>("owner");
    QTest::addColumn<int>("user");
    QTest::addColumn<bool>("allowed");
    QTest::newRow("a name") << QStringLiteral("zhang") << DownloadUser << false;
    QTest::newRow("nothing") << QString() << DownloadUser << false;
    QTest::newRow("half a number") << QStringLiteral("42x") << DownloadUser << false;
    QTest::newRow("hexadecimal") << QStringLiteral("0x2a") << DownloadUser << false;
    QTest::newRow("a name, and nobody is signed in") << QStringLiteral("zhang") << 0 << true;
}

void SelectionRightsTest::anOwnerThatIsNoNumberIsNobody()
{
    QFETCH(QString, owner);
    QFETCH(int, user);
    QFETCH(bool, allowed);
    for (const Desk desk : {Desk::JobFlow, Desk::OrigFile}) {
        const OperationDesk window(desk, rowsOwnedBy({DownloadUser}));
        window.table()->item(0, desk == Desk::JobFlow ? 11 : 15)->setText(owner);
        window.select(0);
        FakeServices::instance().setUser(user);
        const KODMS::Fakes::MessageBoxProbe probe;
        QCOMPARE(isAllowed(window), allowed);
    }
}

KODMS_TEST_MAIN(SelectionRightsTest, QApplication)
#include "SelectionRightsTest.moc"
