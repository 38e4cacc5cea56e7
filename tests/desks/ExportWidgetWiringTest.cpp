// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "tests/desks/ConditionLines.h"
#include "tests/desks/DeskTest.h"
#include "tests/desks/Receivers.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>

#include <array>
#include <type_traits>

using namespace KODMS::Tests;
using KODMS::UI::DMS_Export_Widget;
using KODMS::UI::DMS_UICommon;

/// What the job-flow desk listens to, and what its meta-object offers.
class ExportWidgetWiringTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void theMethodTable();
    void onlyTheDesksOwnMethodsAreNew();
    void everyControlReachesItsSlotOnce_data();
    void everyControlReachesItsSlotOnce();
    void nothingLeadsToTheJobCheck();
    void theExportSignalIsTheHosts();
    void refreshReloads();
    void theHubReloadsEveryDesk();
    void theHubReachesNoDeletedDesk();
    void flowDetailsReloadOnce();
    void closingTheHostWithoutAnImportWindowIsSilent();
    void aWebItemNameChangesNothingOnScreen();
    void hiddenControlsSlotsSearchWhenCalled_data();
    void hiddenControlsSlotsSearchWhenCalled();
    void textSetByAProgramSendsNothing_data();
    void textSetByAProgramSendsNothing();
    void theHiddenFieldComboSearchesWhenItChanges();
    void aDeskDiesInTheMiddleOfAnything();
    void aHostsConnectionsDoNotOutliveTheDesk();
};

namespace {

static_assert(std::is_constructible_v<DMS_Export_Widget, QWidget *>);
static_assert(!std::is_default_constructible_v<DMS_Export_Widget>);
static_assert(std::is_same_v<decltype(&DMS_Export_Widget::setFlowDetailsData),
                             void (DMS_Export_Widget::*)(QString)>);
static_assert(std::is_same_v<decltype(&DMS_Export_Widget::emitExportJobInfo),
                             void (DMS_Export_Widget::*)(const QString &, int)>);

QObject *senderOf(const DMS_Export_Widget &desk, const QByteArray &name)
{
    if (name == "hub")
        return DMS_UICommon::interface();
    if (name == "job header")
        return jobTable(desk)->horizontalHeader();
    return control<QObject>(desk, name.constData());
}

const std::initializer_list<Right> Reviewer = {Right::CheckAuthority};

} // namespace

void ExportWidgetWiringTest::theMethodTable()
{
    const QMetaObject &meta = DMS_Export_Widget::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        const char *const kind = method.methodType() == QMetaMethod::Signal ? "signal " : "slot ";
        const char *const access = method.access() == QMetaMethod::Private ? "private " : "public ";
        methods << QString::fromLatin1(access) + QString::fromLatin1(kind) +
                       QString::fromLatin1(method.methodSignature());
    }
    QCOMPARE(methods.join(QLatin1Char('\n')),
             QStringLiteral("public signal emitExportJobInfo(QString,int)\n"
                            "public slot on_parent_main_ui_closed()\n"
                            "public slot on_parent_newWebItemNameGetted(QString)\n"
                            "private slot on_m_pExportPB_Clicked()\n"
                            "private slot updateExportJobTable()\n"
                            "private slot on_m_pCreateQuestionPB_clicked()\n"
                            "private slot on_m_pViewQuestionPB_clicked()\n"
                            "private slot on_m_pResolveQuestionPB_clicked()\n"
                            "private slot on_m_pCheckJobPB_clicked()\n"
                            "private slot on_m_pJobPassPB_clicked()\n"
                            "private slot on_m_pJobUnpassPB_clicked()\n"
                            "private slot on_m_pJobTableWidget_ItemClicked(QTableWidgetItem*)\n"
                            "private slot "
                            "on_m_pQuestionTableWidget_ItemDoubleClicked(QTableWidgetItem*)\n"
                            "private slot on_m_pFilterLE_textEdited(QString)\n"
                            "private slot on_m_pJobFilterLE_textEdited(QString)\n"
                            "private slot on_m_pLayerFilterLE_textEdited(QString)\n"
                            "private slot on_m_pFeatureFilterLE_textEdited(QString)\n"
                            "private slot on_m_pPrerFilterLE_textEdited(QString)\n"
                            "private slot on_m_pCheckerFilterLE_textEdited(QString)\n"
                            "private slot on_horizontalHeader_sectionClicked(int)\n"
                            "private slot on_m_pFilterCMB_currentIndexChanged(int)\n"
                            "private slot on_m_pStatusFilterCMB_currentIndexChanged(int)\n"
                            "private slot on_m_pAssignPB_clicked()\n"
                            "private slot on_m_pJobTableWidget_itemChanged(QTableWidgetItem*)\n"
                            "private slot on_m_pImputPB_clicked()\n"
                            "private slot on_m_TurnPage_currentPageChanged()\n"
                            "private slot on_m_pDMS_Import_Widget_webJobHaveSent()\n"
                            "private slot on_m_pDownloadPB_clicked()\n"
                            "private slot execCAMRobot()"));
    QCOMPARE(meta.className(), "KODMS::UI::DMS_Export_Widget");
    QCOMPARE(meta.method(meta.methodOffset()).parameterNames().first(), QByteArray("_jobName"));
}

void ExportWidgetWiringTest::onlyTheDesksOwnMethodsAreNew()
{
    const QMetaObject &meta = DMS_Export_Widget::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(meta.propertyCount(), QWidget::staticMetaObject.propertyCount());
    QCOMPARE(meta.constructorCount(), 0);
}

void ExportWidgetWiringTest::everyControlReachesItsSlotOnce_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("slot");
    const std::initializer_list<std::array<const char *, 3>> rows = {
        {"m_pExportPB", "clicked()", "on_m_pExportPB_Clicked()"},
        {"m_pRefreshPB", "clicked()", "updateExportJobTable()"},
        {"m_pCreateQuestionPB", "clicked()", "on_m_pCreateQuestionPB_clicked()"},
        {"m_pViewQuestionPB", "clicked()", "on_m_pViewQuestionPB_clicked()"},
        {"m_pJobPassPB", "clicked()", "on_m_pJobPassPB_clicked()"},
        {"m_pJobUnpassPB", "clicked()", "on_m_pJobUnpassPB_clicked()"},
        {"m_pFilterLE", "textEdited(QString)", "on_m_pFilterLE_textEdited(QString)"},
        {"m_pResolveQuestionPB", "clicked()", "on_m_pResolveQuestionPB_clicked()"},
        {"m_pDownloadPB", "clicked()", "on_m_pDownloadPB_clicked()"},
        {"hub", "refreshExportJobTable()", "updateExportJobTable()"},
        {"m_pJobTableWidget", "itemClicked(QTableWidgetItem*)",
         "on_m_pJobTableWidget_ItemClicked(QTableWidgetItem*)"},
        {"m_pQuestionTableWidget", "itemDoubleClicked(QTableWidgetItem*)",
         "on_m_pQuestionTableWidget_ItemDoubleClicked(QTableWidgetItem*)"},
        {"m_pFilterCMB", "currentIndexChanged(int)", "on_m_pFilterCMB_currentIndexChanged(int)"},
        {"m_pStatusFilterCMB", "currentIndexChanged(int)",
         "on_m_pStatusFilterCMB_currentIndexChanged(int)"},
        {"m_pAssignPB", "clicked()", "on_m_pAssignPB_clicked()"},
        {"m_pJobFilterLE", "textEdited(QString)", "on_m_pJobFilterLE_textEdited(QString)"},
        {"m_pLayerFilterLE", "textEdited(QString)", "on_m_pLayerFilterLE_textEdited(QString)"},
        {"m_pFeatureFilterLE", "textEdited(QString)", "on_m_pFeatureFilterLE_textEdited(QString)"},
        {"m_pPrerFilterLE", "textEdited(QString)", "on_m_pPrerFilterLE_textEdited(QString)"},
        {"m_pCheckerFilterLE", "textEdited(QString)", "on_m_pCheckerFilterLE_textEdited(QString)"},
        {"m_pImputPB", "clicked()", "on_m_pImputPB_clicked()"},
        {"m_TurnPage", "currentPageChanged()", "on_m_TurnPage_currentPageChanged()"},
        {"m_pSendRobotPB", "clicked()", "execCAMRobot()"},
        {"job header", "sectionClicked(int)", "on_horizontalHeader_sectionClicked(int)"},
        {"m_pJobTableWidget", "itemChanged(QTableWidgetItem*)",
         "on_m_pJobTableWidget_itemChanged(QTableWidgetItem*)"}};
    for (const auto &row : rows)
        QTest::addRow("%s %s", row[0], row[1])
            << QByteArray(row[0]) << QByteArray(row[1]) << QByteArray(row[2]);
}

/// One receiver, which is the named slot: a second one would come from slots that
/// are connected by their names once more.
void ExportWidgetWiringTest::everyControlReachesItsSlotOnce()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, signal);
    QFETCH(QByteArray, slot);
    const auto desk = makeDesk(Reviewer);
    QObject *object = senderOf(*desk, from);
    QVERIFY(object);
    QCOMPARE(Receivers::of(object, signal), 1);
    QVERIFY(disconnect(object, asSignal(signal).constData(), desk.get(), asSlot(slot).constData()));
    QCOMPARE(Receivers::of(object, signal), 0);
}

void ExportWidgetWiringTest::nothingLeadsToTheJobCheck()
{
    const auto desk = makeDesk(Reviewer);
    const auto senders = desk->findChildren<QObject *>();
    for (QObject *object : senders)
        QVERIFY(!disconnect(object, nullptr, desk.get(), SLOT(on_m_pCheckJobPB_clicked())));
    const KODMS::Fakes::MessageBoxProbe probe;
    QVERIFY(QMetaObject::invokeMethod(desk.get(), "on_m_pCheckJobPB_clicked"));
    QCOMPARE(probe.count(), 1); // there is no job to check
}

void ExportWidgetWiringTest::theExportSignalIsTheHosts()
{
    const auto desk = makeDesk(Reviewer);
    QCOMPARE(Receivers::of(desk.get(), "emitExportJobInfo(QString,int)"), 0);
    QSignalSpy spy(desk.get(), SIGNAL(emitExportJobInfo(const QString &, int)));
    QVERIFY(spy.isValid());
}

void ExportWidgetWiringTest::refreshReloads()
{
    answerWithFlows(3);
    const auto desk = makeDesk();
    QCOMPARE(searches(), 1);
    QTest::mouseClick(control(*desk, "m_pRefreshPB"), Qt::LeftButton);
    QCOMPARE(searches(), 2);
}

void ExportWidgetWiringTest::theHubReloadsEveryDesk()
{
    const auto first = makeDesk();
    const auto second = makeDesk();
    const int before = searches();
    FakeServices::instance().raiseRefreshExportJobTable();
    QCOMPARE(searches(), before + 2);
    FakeServices::instance().raiseRefreshOrigFileTable();
    QCOMPARE(searches(), before + 2);
}

void ExportWidgetWiringTest::theHubReachesNoDeletedDesk()
{
    auto first = makeDesk();
    const auto second = makeDesk();
    const int receiversBefore = Receivers::of(DMS_UICommon::interface(), "refreshExportJobTable()");
    first.reset();
    QCOMPARE(Receivers::of(DMS_UICommon::interface(), "refreshExportJobTable()"),
             receiversBefore - 1);
    const int before = searches();
    FakeServices::instance().raiseRefreshExportJobTable();
    QCOMPARE(searches(), before + 1);
}

void ExportWidgetWiringTest::flowDetailsReloadOnce()
{
    answerWithFlows(3);
    const auto desk = makeDesk({Right::Admin});
    desk->setFlowDetailsData(QStringLiteral("A1B100002"));
    QCOMPARE(searches(), 2);
    QCOMPARE(jobTable(*desk)->rowCount(), 3);
    QCOMPARE(conditions(1).size(), conditions(0).size());
    for (const auto &condition : conditions(1))
        QVERIFY(condition.value.empty());
}

void ExportWidgetWiringTest::closingTheHostWithoutAnImportWindowIsSilent()
{
    const auto desk = makeDesk();
    FakeServices::instance().forgetCalls();
    desk->on_parent_main_ui_closed();
    QVERIFY(QMetaObject::invokeMethod(desk.get(), "on_parent_main_ui_closed"));
    QVERIFY(FakeServices::instance().calls().isEmpty());
    QVERIFY(FakeServices::instance().windows.isEmpty());
    QVERIFY(desk->isVisible());
}

void ExportWidgetWiringTest::aWebItemNameChangesNothingOnScreen()
{
    const auto desk = makeDesk();
    FakeServices::instance().forgetCalls();
    desk->on_parent_newWebItemNameGetted(QStringLiteral("web000001"));
    QVERIFY(FakeServices::instance().calls().isEmpty());
}

void ExportWidgetWiringTest::hiddenControlsSlotsSearchWhenCalled_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<bool>("takesText");
    QTest::newRow("search term") << QByteArray("on_m_pFilterLE_textEdited") << true;
    QTest::newRow("layer count") << QByteArray("on_m_pLayerFilterLE_textEdited") << true;
    QTest::newRow("feature count") << QByteArray("on_m_pFeatureFilterLE_textEdited") << true;
    QTest::newRow("field") << QByteArray("on_m_pFilterCMB_currentIndexChanged") << false;
    QTest::newRow("status") << QByteArray("on_m_pStatusFilterCMB_currentIndexChanged") << false;
}

void ExportWidgetWiringTest::hiddenControlsSlotsSearchWhenCalled()
{
    QFETCH(QByteArray, slot);
    QFETCH(bool, takesText);
    const auto desk = makeDesk({Right::Admin});
    const int before = searches();
    if (takesText)
        QVERIFY(QMetaObject::invokeMethod(desk.get(), slot.constData(),
                                          Q_ARG(QString, QStringLiteral("anything"))));
    else
        QVERIFY(QMetaObject::invokeMethod(desk.get(), slot.constData(), Q_ARG(int, 3)));
    QCOMPARE(searches(), before + 1);
    // The argument itself is not what is searched for.
    QCOMPARE(conditions().size(), size_t(2));
    QCOMPARE(conditions().front().value, std::string());
}

void ExportWidgetWiringTest::textSetByAProgramSendsNothing_data()
{
    QTest::addColumn<QByteArray>("edit");
    const char *const edits[] = {"m_pFilterLE",        "m_pJobFilterLE",  "m_pLayerFilterLE",
                                 "m_pFeatureFilterLE", "m_pPrerFilterLE", "m_pCheckerFilterLE"};
    for (const char *edit : edits)
        QTest::newRow(edit) << QByteArray(edit);
}

void ExportWidgetWiringTest::textSetByAProgramSendsNothing()
{
    QFETCH(QByteArray, edit);
    const auto desk = makeDesk();
    const int before = searches();
    control<QLineEdit>(*desk, edit.constData())->setText(QStringLiteral("12"));
    QCOMPARE(searches(), before);
}

void ExportWidgetWiringTest::theHiddenFieldComboSearchesWhenItChanges()
{
    const auto desk = makeDesk({Right::Admin});
    control<QComboBox>(*desk, "m_pFilterCMB")->setCurrentIndex(2);
    QCOMPARE(searches(), 2);
    QCOMPARE(allFields(conditions(1)), allFields(conditions(0)));
}

void ExportWidgetWiringTest::aDeskDiesInTheMiddleOfAnything()
{
    answerWithFlows(61);
    auto desk = makeDesk({Right::Admin});
    control(*desk, "m_pGotoPageLE")->setFocus();
    QTest::keyClicks(control(*desk, "m_pGotoPageLE"), QStringLiteral("3"));
    jobTable(*desk)->setCurrentCell(4, 1);
    jobTable(*desk)->editItem(jobTable(*desk)->item(4, 12));
    FakeServices::instance().forgetCalls();
    desk.reset();
    QVERIFY(FakeServices::instance().calls().isEmpty());
    FakeServices::instance().raiseRefreshExportJobTable();
    QCOMPARE(searches(), 0);
}

void ExportWidgetWiringTest::aHostsConnectionsDoNotOutliveTheDesk()
{
    QWidget host;
    QPushButton closing(&host);
    auto *desk = new DMS_Export_Widget(&host);
    connect(&closing, SIGNAL(clicked()), desk, SLOT(on_parent_main_ui_closed()));
    connect(&closing, SIGNAL(windowTitleChanged(const QString &)), desk,
            SLOT(on_parent_newWebItemNameGetted(const QString &)));
    closing.click();
    closing.setWindowTitle(QStringLiteral("web000002"));
    delete desk;
    closing.click();
    closing.setWindowTitle(QStringLiteral("web000003"));
    QCOMPARE(Receivers::of(&closing, "clicked()"), 0);
}

KODMS_TEST_MAIN(ExportWidgetWiringTest, QApplication)
#include "ExportWidgetWiringTest.moc"
