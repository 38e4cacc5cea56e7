// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "tests/desks/ConditionLines.h"
#include "tests/desks/DownloadDesk.h"
#include "tests/desks/Receivers.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>

#include <array>
#include <utility>

using namespace KODMS::Tests;
using KODMS::UI::DMS_Download_Widget;
using KODMS::UI::DMS_UICommon;

/// What the original-file desk listens to, and what its meta-object offers.
class DownloadWidgetWiringTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void theMethodTable();
    void onlyTheDesksOwnMethodsAreNew();
    void everyControlReachesItsSlotOnce_data();
    void everyControlReachesItsSlotOnce();
    void nothingLeadsToTheHeaderMenu();
    void theSignalsAreTheHosts();
    void theHubReloadsEveryDesk();
    void aDeskThatIsStillBeingBuiltHearsNoRefresh();
    void theOtherRefreshSignalIsNotForThisDesk();
    void theHubReachesNoDeletedDesk();
    void aDeskDiesInTheMiddleOfAnything();
    void aDeskIsNotKnownByTheOthersName();
};

namespace {

using Rights = QVector<Right>;

QObject *senderOf(const DMS_Download_Widget &desk, const QByteArray &name)
{
    if (name == "hub")
        return DMS_UICommon::interface();
    if (name == "header")
        return jobTable(desk)->horizontalHeader();
    return control<QObject>(desk, name.constData());
}

} // namespace

void DownloadWidgetWiringTest::theMethodTable()
{
    const QMetaObject &meta = DMS_Download_Widget::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        const char *const kind = method.methodType() == QMetaMethod::Signal ? "signal " : "slot ";
        const char *const access = method.access() == QMetaMethod::Private ? "private " : "public ";
        methods << QString::fromLatin1(access) + QString::fromLatin1(kind) +
                       QString::fromLatin1(method.methodSignature());
        QCOMPARE(method.typeName(), "void");
    }
    QCOMPARE(
        methods.join(QLatin1Char('\n')),
        QStringLiteral("public signal emitExportJobInfo(QString,int)\n"
                       "public signal newWebItemNameGetted(QString)\n"
                       "private slot on_m_pDownloadPB_Clicked()\n"
                       "private slot on_m_pUpdateFilePB_Clicked()\n"
                       "private slot updateDownloadJobTable()\n"
                       "private slot on_m_pFilterLE_textEdited(QString)\n"
                       "private slot on_m_pOpenFileFolder()\n"
                       "private slot on_m_pFilterCMB_currentIndexChanged(int)\n"
                       "private slot on_m_pJobTableWidget_customContextMenuRequest(QPoint)\n"
                       "private slot on_m_pJobTableWidget_Header_customContextMenuRequest(QPoint)\n"
                       "private slot on_horizontalHeader_sectionClicked(int)\n"
                       "private slot on__copyAct_triggered()\n"
                       "private slot on__copyColumnAct_triggered()\n"
                       "private slot on__copyRowAct_triggered()\n"
                       "private slot on__copyAllAct_triggered()\n"
                       "private slot on_m_pAssignPB_clicked()\n"
                       "private slot on_m_TurnPage_currentPageChanged()\n"
                       "private slot on_m_pRobotComplete_clicked()\n"
                       "private slot on_m_pRobotImport_clicked()\n"
                       "private slot on_m_pRobotImport_robotImportComplete()\n"
                       "private slot on_DelFile_clicked()"));
    QCOMPARE(meta.className(), "KODMS::UI::DMS_Download_Widget");
    QCOMPARE(meta.method(meta.methodOffset()).parameterNames().first(), QByteArray("_jobName"));
}

void DownloadWidgetWiringTest::onlyTheDesksOwnMethodsAreNew()
{
    const QMetaObject &meta = DMS_Download_Widget::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(meta.propertyCount(), QWidget::staticMetaObject.propertyCount());
    QCOMPARE(meta.constructorCount(), 0);
}

void DownloadWidgetWiringTest::everyControlReachesItsSlotOnce_data()
{
    QTest::addColumn<Rights>("rights");
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("slot");
    const std::initializer_list<std::array<const char *, 3>> rows = {
        {"DelFile", "clicked()", "on_DelFile_clicked()"},
        {"m_pOpenFolderPB", "clicked()", "on_m_pOpenFileFolder()"},
        {"m_pDownloadPB", "clicked()", "on_m_pDownloadPB_Clicked()"},
        {"m_pRefreshPB", "clicked()", "updateDownloadJobTable()"},
        {"m_pUpdateFilePB", "clicked()", "on_m_pUpdateFilePB_Clicked()"},
        {"m_pAssignPB", "clicked()", "on_m_pAssignPB_clicked()"},
        {"m_pRobotComplete", "clicked()", "on_m_pRobotComplete_clicked()"},
        {"m_pRobotImport", "clicked()", "on_m_pRobotImport_clicked()"},
        {"m_pFilterLE", "textEdited(QString)", "on_m_pFilterLE_textEdited(QString)"},
        {"hub", "refreshOrigFileTable()", "updateDownloadJobTable()"},
        {"m_pFilterCMB", "currentIndexChanged(int)", "on_m_pFilterCMB_currentIndexChanged(int)"},
        {"m_pJobTableWidget", "customContextMenuRequested(QPoint)",
         "on_m_pJobTableWidget_customContextMenuRequest(QPoint)"},
        {"m_TurnPage", "currentPageChanged()", "on_m_TurnPage_currentPageChanged()"},
        {"header", "sectionClicked(int)", "on_horizontalHeader_sectionClicked(int)"}};
    for (const Rights &rights : {Rights(), Rights({Right::Admin})})
        for (const auto &row : rows)
            QTest::addRow("%s: %s %s", qPrintable(rightNames(rights)), row[0], row[1])
                << rights << QByteArray(row[0]) << QByteArray(row[1]) << QByteArray(row[2]);
}

/// One receiver, which is the named slot: a second one would come from slots that
/// are connected by their names once more.
void DownloadWidgetWiringTest::everyControlReachesItsSlotOnce()
{
    QFETCH(Rights, rights);
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, signal);
    QFETCH(QByteArray, slot);
    const auto desk = makeDownloadDesk(rights);
    QObject *object = senderOf(*desk, from);
    QVERIFY(object);
    QCOMPARE(Receivers::of(object, signal), 1);
    QVERIFY(disconnect(object, asSignal(signal).constData(), desk.get(), asSlot(slot).constData()));
    QCOMPARE(Receivers::of(object, signal), 0);
}

void DownloadWidgetWiringTest::nothingLeadsToTheHeaderMenu()
{
    const auto desk = makeDownloadDesk({Right::Admin});
    const auto senders = desk->findChildren<QObject *>();
    for (QObject *object : senders)
        QVERIFY(!disconnect(object, nullptr, desk.get(),
                            SLOT(on_m_pJobTableWidget_Header_customContextMenuRequest(QPoint))));
    QCOMPARE(
        Receivers::of(jobTable(*desk)->horizontalHeader(), "customContextMenuRequested(QPoint)"),
        0);
}

void DownloadWidgetWiringTest::theSignalsAreTheHosts()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk({Right::Admin});
    QCOMPARE(Receivers::of(desk.get(), "emitExportJobInfo(QString,int)"), 0);
    QCOMPARE(Receivers::of(desk.get(), "newWebItemNameGetted(QString)"), 0);
    QSignalSpy exported(desk.get(), SIGNAL(emitExportJobInfo(const QString &, int)));
    QSignalSpy webItem(desk.get(), SIGNAL(newWebItemNameGetted(const QString &)));
    FakeServices::instance().forgetCalls();
    Q_EMIT desk->emitExportJobInfo(QStringLiteral("A1B000001"), 7);
    Q_EMIT desk->newWebItemNameGetted(QStringLiteral("web000001"));
    QCOMPARE(exported.count(), 1);
    QCOMPARE(exported.first().at(1).toInt(), 7);
    QCOMPARE(webItem.count(), 1);
    QCOMPARE(webItem.first().first().toString(), QStringLiteral("web000001"));
    QVERIFY(FakeServices::instance().calls().isEmpty());
}

void DownloadWidgetWiringTest::theHubReloadsEveryDesk()
{
    answerWithFiles(3);
    const auto one = makeDownloadDesk({Right::Admin});
    const auto two = makeDownloadDesk({Right::Admin});
    const int before = fileSearches();
    FakeServices::instance().raiseRefreshOrigFileTable();
    QCOMPARE(fileSearches(), before + 2);
    QCOMPARE(jobTable(*one)->rowCount(), 3);
    QCOMPARE(jobTable(*two)->rowCount(), 3);
}

/// The first page is asked for before anything is connected.
void DownloadWidgetWiringTest::aDeskThatIsStillBeingBuiltHearsNoRefresh()
{
    bool raised = false;
    FakeServices::instance().origFilePages.compute([&raised](const KODMS::Fakes::Call &) {
        if (!std::exchange(raised, true))
            FakeServices::instance().raiseRefreshOrigFileTable();
        return KODMS::Fakes::Page<KODMS::DataLib::Model::Odbpp_OrigFile_View>();
    });
    const auto desk = makeDownloadDesk({Right::Admin});
    QVERIFY(raised);
    QCOMPARE(fileSearches(), 1);
    FakeServices::instance().raiseRefreshOrigFileTable();
    QCOMPARE(fileSearches(), 2);
}

void DownloadWidgetWiringTest::theOtherRefreshSignalIsNotForThisDesk()
{
    const auto desk = makeDownloadDesk({Right::Admin});
    FakeServices::instance().forgetCalls();
    FakeServices::instance().raiseRefreshExportJobTable();
    QVERIFY(FakeServices::instance().calls().isEmpty());
}

void DownloadWidgetWiringTest::theHubReachesNoDeletedDesk()
{
    const int before = Receivers::of(DMS_UICommon::interface(), "refreshOrigFileTable()");
    auto desk = makeDownloadDesk({Right::Admin});
    QCOMPARE(Receivers::of(DMS_UICommon::interface(), "refreshOrigFileTable()"), before + 1);
    desk.reset();
    QCOMPARE(Receivers::of(DMS_UICommon::interface(), "refreshOrigFileTable()"), before);
    FakeServices::instance().forgetCalls();
    FakeServices::instance().raiseRefreshOrigFileTable();
    QVERIFY(FakeServices::instance().calls().isEmpty());
}

void DownloadWidgetWiringTest::aDeskDiesInTheMiddleOfAnything()
{
    answerWithFiles(61);
    auto desk = makeDownloadDesk({Right::Admin});
    control(*desk, "m_pGotoPageLE")->setFocus();
    QTest::keyClicks(control(*desk, "m_pGotoPageLE"), QStringLiteral("3"));
    jobTable(*desk)->setCurrentCell(4, 0);
    jobTable(*desk)->editItem(jobTable(*desk)->item(4, 0));
    FakeServices::instance().forgetCalls();
    desk.reset();
    QVERIFY(FakeServices::instance().calls().isEmpty());
}

/// Hosts tell the desks apart by their classes.
void DownloadWidgetWiringTest::aDeskIsNotKnownByTheOthersName()
{
    const auto desk = makeDownloadDesk();
    QWidget *widget = desk.get();
    QVERIFY(qobject_cast<DMS_Download_Widget *>(widget));
    QVERIFY(!qobject_cast<KODMS::UI::DMS_Export_Widget *>(widget));
    QVERIFY(desk->inherits("KODMS::UI::DMS_Download_Widget"));
}

KODMS_TEST_MAIN(DownloadWidgetWiringTest, QApplication)
#include "DownloadWidgetWiringTest.moc"
