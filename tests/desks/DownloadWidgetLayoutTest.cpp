// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/StyleSheets.h"
#include "tests/desks/DownloadDesk.h"
#include "tests/desks/LayoutLines.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

using namespace KODMS::Tests;

/// What the original-file desk is built of, and for whom.
class DownloadWidgetLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void theLayoutTree_data();
    void theLayoutTree();
    void controlsAreReachedByTabInTheirOrder();
    void visibleControls_data();
    void visibleControls();
    void hiddenControlsStayHiddenWhenTheDeskIsShownAgain_data();
    void hiddenControlsStayHiddenWhenTheDeskIsShownAgain();
    void captions_data();
    void captions();
    void theSearchCombo_data();
    void theSearchCombo();
    void fileButtonsAreEnabledByRight_data();
    void fileButtonsAreEnabledByRight();
    void theUserIdLabel_data();
    void theUserIdLabel();
    void styleSheets_data();
    void styleSheets();
    void theTableAlternatesItsRowColours();
    void thePageBarStandsOverTheTable();
    void assigneesAreExecutors();
    void everyMemberHasItsNameOnce_data();
    void everyMemberHasItsNameOnce();
    void everythingBelongsToTheDesk();
    void theParentIsTheHosts();
    void theShapeIsFixedWhenItIsBuilt();
};

namespace {

using Rights = QVector<Right>;

/// One row for each combination of the rights that shape the desk, and one for
/// all the other rights together.
void addRightRows()
{
    QTest::addColumn<Rights>("rights");
    const auto all = combinations(
        {Right::ShowCompanyName, Right::Admin, Right::TestAdmin, Right::OrigFileUpdate});
    for (const Rights &rights : all)
        QTest::newRow(qPrintable(rightNames(rights))) << rights;
    QTest::newRow("all but the four that shape the desk") << Rights(
        {Right::PreProcess, Right::PreCheckAssign, Right::CheckAuthority, Right::OrigFileAssign});
    QTest::newRow("every right") << Rights({Right::Admin, Right::PreProcess, Right::PreCheckAssign,
                                            Right::TestAdmin, Right::CheckAuthority,
                                            Right::OrigFileUpdate, Right::OrigFileAssign,
                                            Right::ShowCompanyName});
}

QStringList lines(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList comboItems(const QObject &desk, const char *name)
{
    const auto *combo = control<QComboBox>(desk, name);
    QStringList texts;
    for (int index = 0; index < combo->count(); ++index)
        texts << combo->itemText(index);
    return texts;
}

/// Every control that somebody may see, with who does.
const std::initializer_list<std::pair<const char *, const char *>> Visible = {
    {"m_pFilterLE", "all"},       {"m_pFilterCMB", "all"},     {"m_pJobTableWidget", "all"},
    {"m_pRefreshPB", "all"},      {"m_pDownloadPB", "all"},    {"m_pRobotImport", "ordinary"},
    {"m_pAssignerCMB", "files"},  {"m_pAssignPB", "files"},    {"DelFile", "files"},
    {"m_pOpenFolderPB", "files"}, {"m_pUpdateFilePB", "files"}};

} // namespace

void DownloadWidgetLayoutTest::theLayoutTree_data()
{
    addRightRows();
}

void DownloadWidgetLayoutTest::theLayoutTree()
{
    QFETCH(Rights, rights);
    const auto desk = makeDownloadDesk(rights);
    QStringList expected = lines("QVBoxLayout m_pMainLayout\n"
                                 " QHBoxLayout m_pTopLayout\n"
                                 "  QHBoxLayout m_pFilterLayout\n"
                                 "   m_pFilterLE\n"
                                 "   m_pFilterCMB\n");
    if (!seesOrigFiles(rights))
        expected << QStringLiteral("   m_pUserIdLabel");
    expected << lines("   spacer 1x7 Expanding Minimum\n"
                      "  QHBoxLayout m_pAssignLayout\n"
                      "   m_pRobotComplete\n"
                      "   m_pRobotImport\n"
                      "   m_pAssignerCMB\n"
                      "   m_pAssignPB\n"
                      " m_pJobTableWidget\n"
                      " m_TurnPage\n"
                      " QHBoxLayout m_pButtonLayout\n"
                      "  spacer 1x7 Expanding Minimum\n"
                      "  DelFile\n"
                      "  m_pOpenFolderPB\n"
                      "  m_pUpdateFilePB\n"
                      "  m_pRefreshPB\n"
                      "  m_pDownloadPB\n");
    QCOMPARE(layoutLines(desk->layout()), expected);
}

/// The order in which controls were made is the order in which Tab reaches them.
void DownloadWidgetLayoutTest::controlsAreReachedByTabInTheirOrder()
{
    const QStringList expected =
        lines("m_pFilterLE\nm_pFilterCMB\nm_pJobTableWidget\nm_pRobotComplete\nm_pRobotImport\n"
              "m_pAssignerCMB\nm_pAssignPB\nm_pDownloadPB\nm_pRefreshPB\nm_pUpdateFilePB\n"
              "m_pOpenFolderPB\nDelFile\nm_pFirstPagePB");
    const auto desk = makeDownloadDesk();
    QStringList chain;
    for (const QWidget *next = desk->nextInFocusChain(); next != desk.get();
         next = next->nextInFocusChain())
        if (expected.contains(next->objectName()))
            chain << next->objectName();
    QCOMPARE(chain, expected);
}

void DownloadWidgetLayoutTest::visibleControls_data()
{
    addRightRows();
}

void DownloadWidgetLayoutTest::visibleControls()
{
    QFETCH(Rights, rights);
    const auto desk = makeDownloadDesk(rights);
    const QByteArray user = seesOrigFiles(rights) ? "files" : "ordinary";
    for (const auto &entry : Visible) {
        const bool expected = entry.second == QByteArray("all") || entry.second == user;
        QVERIFY2(control(*desk, entry.first)->isVisible() == expected, entry.first);
    }
    QVERIFY(!control(*desk, "m_pRobotComplete")->isVisible());
    QVERIFY(!control(*desk, "m_TurnPage")->isVisible());
}

void DownloadWidgetLayoutTest::hiddenControlsStayHiddenWhenTheDeskIsShownAgain_data()
{
    QTest::addColumn<Rights>("rights");
    QTest::newRow("ordinary") << Rights();
    QTest::newRow("administrator") << Rights({Right::Admin});
}

void DownloadWidgetLayoutTest::hiddenControlsStayHiddenWhenTheDeskIsShownAgain()
{
    QFETCH(Rights, rights);
    answerWithFlows(3);
    answerWithFiles(3);
    const auto desk = makeDownloadDesk(rights);
    const auto visibleNames = [&] {
        QStringList names;
        const auto widgets = desk->findChildren<QWidget *>();
        for (const QWidget *widget : widgets)
            if (widget->isVisible())
                names << widget->objectName();
        return names;
    };
    const QStringList before = visibleNames();
    QVERIFY(!before.contains(QStringLiteral("m_pRobotComplete")));
    desk->hide();
    desk->show();
    QVERIFY(QMetaObject::invokeMethod(desk.get(), "updateDownloadJobTable"));
    QCOMPARE(visibleNames(), before);
}

void DownloadWidgetLayoutTest::captions_data()
{
    addRightRows();
}

void DownloadWidgetLayoutTest::captions()
{
    QFETCH(Rights, rights);
    const auto desk = makeDownloadDesk(rights);
    const bool files = seesOrigFiles(rights);
    const std::initializer_list<std::pair<const char *, const char *>> buttons = {
        {"m_pRobotComplete", "完成"},      {"m_pRobotImport", "重新导入"},
        {"m_pAssignPB", "指派"},           {"DelFile", "删除文件"},
        {"m_pOpenFolderPB", "打开文件夹"}, {"m_pDownloadPB", files ? "下载" : "完成"},
        {"m_pRefreshPB", "刷新"},          {"m_pUpdateFilePB", "更改文件"}};
    for (const auto &button : buttons)
        QCOMPARE(control<QPushButton>(*desk, button.first)->text(),
                 QString::fromUtf8(button.second));
    const auto *edit = control<QLineEdit>(*desk, "m_pFilterLE");
    QCOMPARE(edit->placeholderText(),
             files ? QStringLiteral("请输入搜索项") : QStringLiteral("请输入搜索项,仅限料号名称"));
    QVERIFY(edit->text().isEmpty());
}

void DownloadWidgetLayoutTest::theSearchCombo_data()
{
    addRightRows();
}

void DownloadWidgetLayoutTest::theSearchCombo()
{
    QFETCH(Rights, rights);
    const auto desk = makeDownloadDesk(rights);
    QCOMPARE(comboItems(*desk, "m_pFilterCMB").join(QLatin1Char('/')),
             seesOrigFiles(rights)
                 ? QStringLiteral("全部/原料号名/客户代号/流水号/备注/执行人/客户简称/客户二级/"
                                  "客户三级")
                 : QStringLiteral("全部/料号名称"));
    QCOMPARE(control<QComboBox>(*desk, "m_pFilterCMB")->currentIndex(), 0);
}

void DownloadWidgetLayoutTest::fileButtonsAreEnabledByRight_data()
{
    addRightRows();
}

void DownloadWidgetLayoutTest::fileButtonsAreEnabledByRight()
{
    QFETCH(Rights, rights);
    const auto desk = makeDownloadDesk(rights);
    const bool expected = rights.contains(Right::Admin) || rights.contains(Right::OrigFileUpdate);
    QCOMPARE(control(*desk, "DelFile")->isEnabled(), expected);
    QCOMPARE(control(*desk, "m_pUpdateFilePB")->isEnabled(), expected);
    const char *const others[] = {"m_pRobotImport", "m_pAssignPB", "m_pOpenFolderPB",
                                  "m_pDownloadPB", "m_pRefreshPB"};
    for (const char *name : others)
        QVERIFY2(control(*desk, name)->isEnabled(), name);
}

void DownloadWidgetLayoutTest::theUserIdLabel_data()
{
    addRightRows();
}

void DownloadWidgetLayoutTest::theUserIdLabel()
{
    QFETCH(Rights, rights);
    const auto desk = makeDownloadDesk(rights);
    const auto *label = control<QLabel>(*desk, "m_pUserIdLabel");
    QCOMPARE(label == nullptr, seesOrigFiles(rights));
    if (!label)
        return;
    QCOMPARE(label->text(), QString::number(DownloadUser));
    QVERIFY(!label->isVisible());
}

void DownloadWidgetLayoutTest::styleSheets_data()
{
    using namespace KODMS::UI;
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("sheet");
    const std::initializer_list<std::pair<const char *, QString>> rows = {
        {"m_pJobTableWidget", TableWidgetStyle},
        {"m_pDownloadPB", PushButtonBlueStyle},
        {"m_pRefreshPB", PushButtonBlueStyle},
        {"m_pUpdateFilePB", PushButtonBlueStyle},
        {"m_pOpenFolderPB", PushButtonBlueStyle},
        {"DelFile", PushButtonBlueStyle},
        {"m_pRobotComplete", QString()},
        {"m_pRobotImport", QString()},
        {"m_pAssignPB", QString()},
        {"m_pAssignerCMB", QString()},
        {"m_pFilterLE", QString()},
        {"m_pFilterCMB", QString()},
        {"m_TurnPage", QString()}};
    for (const auto &row : rows)
        QTest::newRow(row.first) << QByteArray(row.first) << row.second;
}

void DownloadWidgetLayoutTest::styleSheets()
{
    QFETCH(QByteArray, name);
    const auto desk = makeDownloadDesk();
    QTEST(control(*desk, name.constData())->styleSheet(), "sheet");
}

void DownloadWidgetLayoutTest::theTableAlternatesItsRowColours()
{
    QVERIFY(jobTable(*makeDownloadDesk())->alternatingRowColors());
}

void DownloadWidgetLayoutTest::thePageBarStandsOverTheTable()
{
    answerWithFiles(61);
    const auto desk = makeDownloadDesk({Right::Admin});
    const auto *bar = control(*desk, "m_TurnPage");
    QCOMPARE(bar->parentWidget(), desk.get());
    QVERIFY(bar->isVisible());
    QCOMPARE(control<QLabel>(*desk, "m_pTotalLabel")->text(), QStringLiteral("/ 3"));
    QCOMPARE(jobTable(*desk)->rowCount(), 30);
    QVERIFY(bar->y() > jobTable(*desk)->y());
    QVERIFY(bar->y() < control(*desk, "m_pDownloadPB")->y());
}

/// Both grouping numbers must match, and the first page comes before the people.
void DownloadWidgetLayoutTest::assigneesAreExecutors()
{
    FakeServices::instance().users.always({{{4, "张伟", 2, 6},
                                            {5, "Anna", 3, 10},
                                            {6, "Bo", 2, 10},
                                            {7, "Cho", 3, 6},
                                            {3, "李娜", 2, 6}}});
    const auto desk = makeDownloadDesk({Right::Admin});
    QCOMPARE(comboItems(*desk, "m_pAssignerCMB"),
             QStringList({QStringLiteral("张伟"), QStringLiteral("李娜")}));
    QStringList names;
    const auto operations = FakeServices::instance().operations();
    for (const auto &call : operations)
        names << call.name;
    QCOMPARE(names,
             QStringList({QStringLiteral("Odbpp_OrigFile_ViewBll::selectAndCountBySearchModel"),
                          QStringLiteral("User_ViewBll::select")}));
}

void DownloadWidgetLayoutTest::everyMemberHasItsNameOnce_data()
{
    QTest::addColumn<Rights>("rights");
    QTest::newRow("ordinary") << Rights();
    QTest::newRow("administrator") << Rights({Right::Admin});
}

void DownloadWidgetLayoutTest::everyMemberHasItsNameOnce()
{
    QFETCH(Rights, rights);
    const auto desk = makeDownloadDesk(rights);
    QStringList names;
    const auto all =
        desk->findChildren<QObject *>(QRegularExpression(QStringLiteral("^(m_|DelFile)")));
    for (const QObject *object : all)
        names << object->objectName();
    names.sort();
    QStringList expected =
        lines("m_pFilterLE\nm_pFilterCMB\nm_pFilterLayout\nm_pRobotComplete\nm_pRobotImport\n"
              "m_pAssignerCMB\nm_pAssignPB\nm_pAssignLayout\nm_pTopLayout\nm_pJobTableWidget\n"
              "DelFile\nm_pOpenFolderPB\nm_pDownloadPB\nm_pRefreshPB\nm_pUpdateFilePB\n"
              "m_pButtonLayout\nm_pMainLayout\nm_TurnPage\n"
              // the page bar's own
              "m_pFirstPagePB\nm_pPageUpPB\nm_pGotoPageLE\nm_pTotalLabel\nm_pPageDownPB\n"
              "m_pLastPagePB");
    if (rights.isEmpty())
        expected << QStringLiteral("m_pUserIdLabel");
    expected.sort();
    QCOMPARE(names, expected);
}

void DownloadWidgetLayoutTest::everythingBelongsToTheDesk()
{
    const auto desk = makeDownloadDesk();
    const auto widgets = desk->findChildren<QWidget *>(
        QRegularExpression(QStringLiteral("^(m_|DelFile)")), Qt::FindDirectChildrenOnly);
    QCOMPARE(widgets.size(), 14);
    QCOMPARE(desk->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(), 14);
    QVERIFY(FakeServices::instance().windows.isEmpty());
}

void DownloadWidgetLayoutTest::theParentIsTheHosts()
{
    QWidget host;
    auto *desk = new KODMS::UI::DMS_Download_Widget(&host);
    QCOMPARE(desk->parentWidget(), &host);
    QVERIFY(!desk->isWindow());
}

void DownloadWidgetLayoutTest::theShapeIsFixedWhenItIsBuilt()
{
    const auto desk = makeDownloadDesk();
    FakeServices::instance().grant(Right::Admin);
    FakeServices::instance().setUser(77);
    FakeServices::instance().raiseRefreshOrigFileTable();
    QCOMPARE(jobTable(*desk)->columnCount(), 18);
    QCOMPARE(comboItems(*desk, "m_pFilterCMB").size(), 2);
    QVERIFY(!control(*desk, "DelFile")->isVisible());
    QCOMPARE(control<QLabel>(*desk, "m_pUserIdLabel")->text(), QString::number(DownloadUser));
}

KODMS_TEST_MAIN(DownloadWidgetLayoutTest, QApplication)
#include "DownloadWidgetLayoutTest.moc"
