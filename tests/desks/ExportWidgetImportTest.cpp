// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_Import_Widget.h"
#include "tests/desks/BoxStory.h"
#include "tests/desks/DeskTest.h"
#include "tests/desks/PrivateMember.h"
#include "tests/desks/Receivers.h"
#include "tests/desks/WindowStory.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QPushButton>

using KODMS::UI::DMS_Export_Widget;
using KODMS::UI::DMS_Import_Widget;
using KODMS::UI::Import_Info;

namespace KODMS::Tests {

struct WebItemName {
    using Type = QString DMS_Export_Widget::*;
};

template struct OpenMember<WebItemName, &DMS_Export_Widget::m_webItemName>;

} // namespace KODMS::Tests

using namespace KODMS::Tests;

/// The window in which a pre-processed job is imported.
class ExportWidgetImportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init();
    void cleanup();

    void withoutACurrentRowTheUserIsAskedToSelect();
    void kosNeedsNoImport_data();
    void kosNeedsNoImport();
    void theFirstImportMakesTheWindow();
    void theWindowIsToldTheJob();
    void theFirstThreeCharactersTellTheWeb_data();
    void theFirstThreeCharactersTellTheWeb();
    void theNextImportShowsTheSameWindow();
    void anOpenWindowIsToldTheNextJob();
    void aSentWebJobIsForgotten();
    void theCurrentRowCountsNotTheSelection();
    void kosLeavesAnOpenWindowAlone();
    void theMainWindowClosesIt();
    void theWindowOutlivesTheDesk();
    void aWindowThatIsGoneIsMadeAnew();

private:
    void press() const { control<QPushButton>(*m_desk, "m_pImputPB")->click(); }

    void makeCurrent(int row) const { jobTable(*m_desk)->setCurrentCell(row, 1); }

    DMS_Import_Widget *window() const;

    std::unique_ptr<WindowStory> m_windows;
    std::unique_ptr<DMS_Export_Widget> m_desk;
};

namespace {

/// Counts how often a window is asked to close.
class ClosedCount : public QObject {
public:
    explicit ClosedCount(QObject *window) { window->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Close ? 1 : 0;
        return false;
    }

    int count = 0;
};

Import_Info told(int index)
{
    return FakeServices::instance()
        .calls("DMS_Import_Widget::setFlowGuid")
        .at(index)
        .arguments.first()
        .value<Import_Info>();
}

/// One flow with everything that an import asks for.
KODMS::DataLib::Model::Odbpp_Flow_View flow(int id, const char *jobName)
{
    auto flow = someFlow(id);
    flow.jobName = jobName;
    flow.uuid = "file" + std::to_string(id) + ".tgz";
    flow.orderSuffix = "tgz";
    flow.origFileSuffix = "zip";
    return flow;
}

void answerWith(const KODMS::DataLib::Model::Odbpp_Flow_View &first)
{
    FakeServices::instance().flowPages.always({{first, flow(2, "web000002")}, 2, true});
}

} // namespace

void ExportWidgetImportTest::init()
{
    FakeServices::instance().reset();
    answerWith(flow(1, "A1B000001"));
    m_windows = std::make_unique<WindowStory>();
    m_desk = makeDesk({Right::Admin});
    FakeServices::instance().forgetCalls();
}

void ExportWidgetImportTest::cleanup()
{
    m_desk.reset();
    m_windows.reset();
}

DMS_Import_Widget *ExportWidgetImportTest::window() const
{
    const auto &windows = FakeServices::instance().windows;
    return windows.isEmpty() ? nullptr
                             : qobject_cast<DMS_Import_Widget *>(windows.first().window.data());
}

void ExportWidgetImportTest::withoutACurrentRowTheUserIsAskedToSelect()
{
    const BoxStory boxes;
    press();
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"请选择一个料号\")"));
    const auto &box = boxes.probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_desk.get()));
    QVERIFY(!window());
}

void ExportWidgetImportTest::kosNeedsNoImport_data()
{
    QTest::addColumn<QByteArray>("orderSuffix");
    QTest::addColumn<QByteArray>("origFileSuffix");
    QTest::addColumn<bool>("isStopped");
    const auto row = [](const char *title, const char *order, const char *file, bool isStopped) {
        QTest::newRow(title) << QByteArray(order) << QByteArray(file) << isStopped;
    };
    row("the order says kos", "kos", "tgz", true);
    row("the file says kos", "tgz", "kos", true);
    row("both say kos", "kos", "kos", true);
    row("capitals are something else", "KOS", "Kos", false);
    row("more than kos is something else", "kos2", " kos", false);
    row("neither says anything", "", "", false);
}

void ExportWidgetImportTest::kosNeedsNoImport()
{
    QFETCH(QByteArray, orderSuffix);
    QFETCH(QByteArray, origFileSuffix);
    QFETCH(bool, isStopped);
    auto job = flow(1, "A1B000001");
    job.orderSuffix = orderSuffix.toStdString();
    job.origFileSuffix = origFileSuffix.toStdString();
    answerWith(job);
    control<QPushButton>(*m_desk, "m_pRefreshPB")->click();
    makeCurrent(0);
    FakeServices::instance().forgetCalls();
    const BoxStory boxes;
    press();
    QCOMPARE(window() == nullptr, isStopped);
    if (!isStopped)
        return;
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"kos格式无需导入\")"));
    QCOMPARE(boxes.probe.boxes().first().title, QStringLiteral("Information"));
    QCOMPARE(boxes.probe.boxes().first().buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

void ExportWidgetImportTest::theFirstImportMakesTheWindow()
{
    makeCurrent(0);
    const BoxStory boxes;
    press();
    QCOMPARE(BoxStory::text(), QStringLiteral("DMS_Import_Widget::DMS_Import_Widget(0, null)\n"
                                              "shown()\n"
                                              "DMS_Import_Widget::setFlowGuid(\"A1B000001\")"));
    QCOMPARE(window()->size(), QSize(600, 400));
    QVERIFY(window()->isVisible());
    QCOMPARE(window()->parent(), nullptr);
    QCOMPARE(boxes.probe.count(), 0);
    QCOMPARE(searches(), 0);
}

void ExportWidgetImportTest::theWindowIsToldTheJob()
{
    makeCurrent(0);
    press();
    const Import_Info info = told(0);
    QCOMPARE(info.jobNamePrefix, QStringLiteral("A1B"));
    QCOMPARE(info.jobName, QStringLiteral("A1B000001"));
    QCOMPARE(info.origJobName, QStringLiteral("board"));
    QCOMPARE(info.flowGuid, QStringLiteral("guid1"));
    QVERIFY(!info.isWeb);
    QCOMPARE(info.uuid, QStringLiteral("file1.tgz"));
}

void ExportWidgetImportTest::theFirstThreeCharactersTellTheWeb_data()
{
    QTest::addColumn<QString>("job");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<bool>("isWeb");
    QTest::newRow("as customers have it")
        << QStringLiteral("web000001") << QStringLiteral("web") << true;
    QTest::newRow("in any case") << QStringLiteral("Web123") << QStringLiteral("Web") << true;
    QTest::newRow("not elsewhere") << QStringLiteral("aweb01") << QStringLiteral("awe") << false;
    QTest::newRow("no more than the three")
        << QStringLiteral("WEB") << QStringLiteral("WEB") << true;
    QTest::newRow("fewer than three") << QStringLiteral("we") << QStringLiteral("we") << false;
    QTest::newRow("no name") << QString() << QString() << false;
}

void ExportWidgetImportTest::theFirstThreeCharactersTellTheWeb()
{
    QFETCH(QString, job);
    QFETCH(QString, prefix);
    QFETCH(bool, isWeb);
    answerWith(flow(1, job.toUtf8().constData()));
    control<QPushButton>(*m_desk, "m_pRefreshPB")->click();
    makeCurrent(0);
    press();
    QCOMPARE(told(0).jobNamePrefix, prefix);
    QCOMPARE(told(0).isWeb, isWeb);
    QCOMPARE(told(0).uuid, QStringLiteral("file1.tgz"));
}

void ExportWidgetImportTest::theNextImportShowsTheSameWindow()
{
    makeCurrent(0);
    press();
    window()->resize(800, 300);
    window()->close();
    makeCurrent(1);
    FakeServices::instance().forgetCalls();
    press();
    QCOMPARE(BoxStory::text(), QStringLiteral("shown()\n"
                                              "DMS_Import_Widget::setFlowGuid(\"web000002\")"));
    QCOMPARE(FakeServices::instance().windows.size(), 1);
    QVERIFY(window()->isVisible());
    QCOMPARE(window()->size(), QSize(800, 300));
    QCOMPARE(Receivers::of(window(), "webJobHaveSent()"), 1);
}

void ExportWidgetImportTest::anOpenWindowIsToldTheNextJob()
{
    makeCurrent(0);
    press();
    makeCurrent(1);
    press();
    QCOMPARE(FakeServices::instance().windows.size(), 1);
    QCOMPARE(told(1).jobName, QStringLiteral("web000002"));
    QCOMPARE(told(1).flowGuid, QStringLiteral("guid2"));
}

void ExportWidgetImportTest::aSentWebJobIsForgotten()
{
    const auto name = privateMember<WebItemName>;
    makeCurrent(0);
    press();
    for (const char *webJob : {"web000006", "web000007"}) {
        m_desk->on_parent_newWebItemNameGetted(QString::fromLatin1(webJob));
        QCOMPARE((*m_desk).*name, QString::fromLatin1(webJob));
    }
    FakeServices::instance().forgetCalls();
    Q_EMIT window()->webJobHaveSent();
    QVERIFY(((*m_desk).*name).isEmpty());
    QVERIFY(FakeServices::instance().calls().isEmpty());
}

void ExportWidgetImportTest::theCurrentRowCountsNotTheSelection()
{
    auto *table = jobTable(*m_desk);
    table->setCurrentCell(1, 1);
    table->clearSelection();
    table->setRangeSelected({0, 0, 0, table->columnCount() - 1}, true);
    QCOMPARE(table->currentRow(), 1);
    press();
    QCOMPARE(told(0).jobName, QStringLiteral("web000002"));
}

void ExportWidgetImportTest::kosLeavesAnOpenWindowAlone()
{
    makeCurrent(1);
    press();
    window()->hide();
    auto job = flow(1, "A1B000001");
    job.origFileSuffix = "kos";
    answerWith(job);
    control<QPushButton>(*m_desk, "m_pRefreshPB")->click();
    makeCurrent(0);
    FakeServices::instance().forgetCalls();
    const BoxStory boxes;
    press();
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"kos格式无需导入\")"));
    QVERIFY(window()->isHidden());
}

void ExportWidgetImportTest::theMainWindowClosesIt()
{
    makeCurrent(0);
    press();
    const ClosedCount closed(window());
    m_desk->on_parent_main_ui_closed();
    QCOMPARE(closed.count, 1); // asked to close, which it may refuse; not just hidden
    QVERIFY(!window()->isVisible());
    press();
    QVERIFY(window()->isVisible());
    QCOMPARE(FakeServices::instance().windows.size(), 1);
}

void ExportWidgetImportTest::theWindowOutlivesTheDesk()
{
    makeCurrent(0);
    press();
    m_desk.reset();
    QVERIFY(window());
    QCOMPARE(Receivers::of(window(), "webJobHaveSent()"), 0);
    Q_EMIT window()->webJobHaveSent();
}

/// It goes when its user signs out, which the desk may survive.
void ExportWidgetImportTest::aWindowThatIsGoneIsMadeAnew()
{
    makeCurrent(0);
    press();
    delete window();
    m_desk->on_parent_main_ui_closed();
    FakeServices::instance().forgetCalls();
    press();
    QCOMPARE(BoxStory::text(), QStringLiteral("DMS_Import_Widget::DMS_Import_Widget(0, null)\n"
                                              "shown()\n"
                                              "DMS_Import_Widget::setFlowGuid(\"A1B000001\")"));
    QCOMPARE(FakeServices::instance().windows.last().window->size(), QSize(600, 400));
}

KODMS_TEST_MAIN(ExportWidgetImportTest, QApplication)
#include "ExportWidgetImportTest.moc"
