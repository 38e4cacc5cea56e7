// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/StyleSheets.h"
#include "tests/desks/DeskTest.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <map>

using namespace KODMS::Tests;

/// What the job-flow desk's controls say and how they look.
class ExportWidgetFaceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void everybodySeesTheRest();
    void captionsAndPlaceholders();
    void comboBoxesListTheirItems();
    void groupBoxesHaveNoTitle();
    void styleSheets_data();
    void styleSheets();
    void nothingElseIsStyled();
    void bothTablesAlternateTheirRowColours();
};

void ExportWidgetFaceTest::everybodySeesTheRest()
{
    const auto desk = makeDesk();
    const char *const visible[] = {"m_pJobFilterLabel",
                                   "m_pJobFilterLE",
                                   "m_pPrerFilterLabel",
                                   "m_pPrerFilterLE",
                                   "m_pCheckerFilterLabel",
                                   "m_pCheckerFilterLE",
                                   "m_pAssignerCMB",
                                   "m_pAssignPB",
                                   "m_pImputPB",
                                   "m_pJobGroupBox",
                                   "m_pJobTableWidget",
                                   "m_pRefreshPB",
                                   "m_pQuestionGroupBox",
                                   "m_pQuestionTableWidget",
                                   "m_pViewQuestionPB",
                                   "m_pResolveQuestionPB"};
    for (const char *name : visible)
        QVERIFY2(control(*desk, name) && control(*desk, name)->isVisible(), name);
}

void ExportWidgetFaceTest::captionsAndPlaceholders()
{
    const auto desk = makeDesk({Right::CheckAuthority});
    const std::initializer_list<std::pair<const char *, const char *>> labels = {
        {"m_pJobFilterLabel", "料号名称："},
        {"m_pLayerFilterLabel", "板层："},
        {"m_pFeatureFilterLabel", "Feature数："},
        {"m_pPrerFilterLabel", "前处理人："},
        {"m_pCheckerFilterLabel", "批号："}};
    for (const auto &label : labels)
        QCOMPARE(control<QLabel>(*desk, label.first)->text(), QString::fromUtf8(label.second));
    const std::initializer_list<std::pair<const char *, const char *>> edits = {
        {"m_pFilterLE", "请输入搜索项"},
        {"m_pJobFilterLE", "请输入搜索项"},
        {"m_pLayerFilterLE", "该项仅支持精确搜索"},
        {"m_pFeatureFilterLE", "该项仅支持精确搜索"},
        {"m_pPrerFilterLE", "请输入搜索项"},
        {"m_pCheckerFilterLE", "请输入搜索项"}};
    for (const auto &edit : edits) {
        QCOMPARE(control<QLineEdit>(*desk, edit.first)->placeholderText(),
                 QString::fromUtf8(edit.second));
        QVERIFY(control<QLineEdit>(*desk, edit.first)->text().isEmpty());
    }
    const std::initializer_list<std::pair<const char *, const char *>> buttons = {
        {"m_pAssignPB", "指派"},
        {"m_pImputPB", "导入前处理料号"},
        {"m_pJobPassPB", "通过"},
        {"m_pJobUnpassPB", "不通过"},
        {"m_pRefreshPB", "刷新"},
        {"m_pSendRobotPB", "发送机器人"},
        {"m_pCreateQuestionPB", "创建问题"},
        {"m_pViewQuestionPB", "查看问题"},
        {"m_pResolveQuestionPB", "解决"},
        {"m_pDownloadPB", "下载"},
        {"m_pExportPB", "导出"}};
    for (const auto &button : buttons)
        QCOMPARE(control<QPushButton>(*desk, button.first)->text(),
                 QString::fromUtf8(button.second));
}

void ExportWidgetFaceTest::comboBoxesListTheirItems()
{
    const auto desk = makeDesk();
    const auto items = [&](const char *name) {
        const auto *combo = control<QComboBox>(*desk, name);
        QStringList texts{QString::number(combo->currentIndex())};
        for (int index = 0; index < combo->count(); ++index)
            texts << combo->itemText(index);
        return texts.join(QLatin1Char('/'));
    };
    QCOMPARE(items("m_pFilterCMB"), QStringLiteral("0/全部/料号名称/板层/feature数/执行者"));
    QCOMPARE(items("m_pStatusFilterCMB"),
             QStringLiteral("0/全部/待前处理/前处理未审核/审核未通过/审核通过/完成/机器人处理中"));
}

void ExportWidgetFaceTest::groupBoxesHaveNoTitle()
{
    const auto desk = makeDesk();
    QCOMPARE(control<QGroupBox>(*desk, "m_pJobGroupBox")->title(), QString());
    QCOMPARE(control<QGroupBox>(*desk, "m_pQuestionGroupBox")->title(), QString());
    QCOMPARE(control(*desk, "m_pJobGroupBox")->parentWidget(), desk.get());
    QCOMPARE(control(*desk, "m_pQuestionGroupBox")->parentWidget(), desk.get());
}

namespace {

/// The controls that have a style sheet; the others look like their window.
const std::map<QByteArray, QString> &styled()
{
    using namespace KODMS::UI;
    static const std::map<QByteArray, QString> sheets = {
        {"m_pJobTableWidget", TableWidgetStyle},
        {"m_pQuestionTableWidget", TableWidgetStyle},
        {"m_pJobPassPB", PushButtonBlueStyle},
        {"m_pJobUnpassPB", PushButtonGrayStyle},
        {"m_pCreateQuestionPB", PushButtonBlueStyle},
        {"m_pSendRobotPB", PushButtonBlueStyle},
        {"m_pRefreshPB", PushButtonBlueStyle},
        {"m_pExportPB", PushButtonBlueStyle},
        {"m_pViewQuestionPB", PushButtonBlueStyle},
        {"m_pResolveQuestionPB", PushButtonGrayStyle}};
    return sheets;
}

} // namespace

void ExportWidgetFaceTest::styleSheets_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("sheet");
    for (const auto &sheet : styled())
        QTest::newRow(sheet.first.constData()) << sheet.first << sheet.second;
}

void ExportWidgetFaceTest::styleSheets()
{
    QFETCH(QByteArray, name);
    const auto desk = makeDesk({Right::CheckAuthority});
    QTEST(control(*desk, name.constData())->styleSheet(), "sheet");
}

void ExportWidgetFaceTest::nothingElseIsStyled()
{
    const auto desk = makeDesk({Right::CheckAuthority});
    QCOMPARE(desk->styleSheet(), QString());
    QCOMPARE(desk->windowTitle(), QString());
    const QSize anySize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    const auto widgets = desk->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const QByteArray name = widget->objectName().toLatin1();
        if (!name.startsWith("m_") || styled().count(name) == 1)
            continue;
        QVERIFY2(widget->styleSheet().isEmpty(), name);
        QVERIFY2(widget->toolTip().isEmpty(), name);
        QVERIFY2(widget->minimumSize() == QSize(0, 0), name);
        QVERIFY2(widget->maximumSize() == anySize || name == "m_pGotoPageLE", name);
    }
}

void ExportWidgetFaceTest::bothTablesAlternateTheirRowColours()
{
    const auto desk = makeDesk();
    QVERIFY(jobTable(*desk)->alternatingRowColors());
    QVERIFY(questionTable(*desk)->alternatingRowColors());
}

KODMS_TEST_MAIN(ExportWidgetFaceTest, QApplication)
#include "ExportWidgetFaceTest.moc"
