// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/ProgramStart.h"
#include "desks/modifyfile/DMS_ModifyFile_Widget.h"
#include "tests/desks/BoxStory.h"
#include "tests/desks/DownloadDesk.h"
#include "tests/desks/PrivateMember.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QPushButton>

using KODMS::UI::DMS_ModifyFile_Widget;

namespace KODMS::Tests {

struct ModifyText {
    using Type = QString DMS_ModifyFile_Widget::*;
};

struct OrigName : ModifyText {};

struct FileType : ModifyText {};

struct Uuid : ModifyText {};

struct Id : ModifyText {};

struct CustomerCode : ModifyText {};

struct FlowGuid : ModifyText {};

struct SerialNumber : ModifyText {};

template struct OpenMember<OrigName, &DMS_ModifyFile_Widget::m_OrigName>;
template struct OpenMember<FileType, &DMS_ModifyFile_Widget::m_FileType>;
template struct OpenMember<Uuid, &DMS_ModifyFile_Widget::m_Uuid>;
template struct OpenMember<Id, &DMS_ModifyFile_Widget::m_Id>;
template struct OpenMember<CustomerCode, &DMS_ModifyFile_Widget::m_CustomerCode>;
template struct OpenMember<FlowGuid, &DMS_ModifyFile_Widget::m_FlowGuid>;
template struct OpenMember<SerialNumber, &DMS_ModifyFile_Widget::m_SerialNumber>;

} // namespace KODMS::Tests

using namespace KODMS::Tests;

Q_DECLARE_METATYPE(QMessageBox::StandardButton)

/// Deleting and replacing the file of the current row, and the download folder.
class DownloadWidgetFilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init();
    void cleanup();

    void withoutACurrentRowTheUserIsAskedToSelect_data();
    void withoutACurrentRowTheUserIsAskedToSelect();
    void theQuestions_data();
    void theQuestions();
    void anyAnswerButYesStops_data();
    void anyAnswerButYesStops();
    void aFileIsDeletedFromTheStoreAndThenFromTheRecords();
    void aDeletedRowStaysUntilTheNextSearch();
    void theCurrentRowCountsNotTheSelection();
    void theDeletionReadsTheConfigurationForEachValue();
    void nobodyLooksAtTheDeletionsResults();
    void theRowIsReadBeforeTheQuestion();
    void aDeskThatGoesDuringTheQuestionDoesNothing_data();
    void aDeskThatGoesDuringTheQuestionDoesNothing();
    void theReplacementIsToldTheRow();
    void theReplacementIsAWindowOfTheDesk();
    void anotherReplacementUsesTheSameWindow();
    void nothingIsRefreshedByAReplacement();
    void theFolderIsShown();
    void theFolderNeedsNoRow();

private:
    void press(const QByteArray &button) const
    {
        control<QPushButton>(*m_desk, button.constData())->click();
    }

    void makeCurrent(int row) const { jobTable(*m_desk)->setCurrentCell(row, 0); }

    DMS_ModifyFile_Widget *replacement() const
    {
        return m_desk->findChild<DMS_ModifyFile_Widget *>();
    }

    std::unique_ptr<KODMS::UI::DMS_Download_Widget> m_desk;
};

namespace {

QStringList data(const DMS_ModifyFile_Widget &window)
{
    return {window.*privateMember<OrigName>,     window.*privateMember<FileType>,
            window.*privateMember<Uuid>,         window.*privateMember<Id>,
            window.*privateMember<CustomerCode>, window.*privateMember<FlowGuid>,
            window.*privateMember<SerialNumber>};
}

/// Notes what a window is told at the moment when it is shown.
class DataAtShow : public QObject {
public:
    explicit DataAtShow(DMS_ModifyFile_Widget *window) : m_window(window)
    {
        window->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Show)
            seen = data(*m_window);
        return false;
    }

    QStringList seen;

private:
    DMS_ModifyFile_Widget *m_window;
};

} // namespace

void DownloadWidgetFilesTest::init()
{
    auto &services = FakeServices::instance();
    services.reset();
    services.config.fileStoreDb = "database";
    services.config.fileStoreBucket = "bucket";
    services.config.downloadDir = "d:/jobs/";
    answerWithFiles(3);
    m_desk = makeDownloadDesk({Right::Admin});
    services.forgetCalls();
}

void DownloadWidgetFilesTest::cleanup()
{
    m_desk.reset();
    KODMS::UI::setProgramStarter({});
}

void DownloadWidgetFilesTest::withoutACurrentRowTheUserIsAskedToSelect_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("delete") << QByteArray("DelFile");
    QTest::newRow("replace") << QByteArray("m_pUpdateFilePB");
}

void DownloadWidgetFilesTest::withoutACurrentRowTheUserIsAskedToSelect()
{
    QFETCH(QByteArray, button);
    jobTable(*m_desk)->setCurrentCell(-1, -1);
    const BoxStory boxes;
    press(button);
    QCOMPARE(FakeServices::instance().calls().size(), 1);
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"请选择一行数据\")"));
    const auto &box = boxes.probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_desk.get()));
    QVERIFY(!replacement());
}

void DownloadWidgetFilesTest::theQuestions_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("text");
    QTest::newRow("delete") << QByteArray("DelFile") << QStringLiteral("确认删除此job:board2?");
    QTest::newRow("replace") << QByteArray("m_pUpdateFilePB")
                             << QStringLiteral("确认更改原始文件:board2吗?");
}

void DownloadWidgetFilesTest::theQuestions()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, text);
    makeCurrent(1);
    const BoxStory boxes;
    press(button);
    QCOMPARE(boxes.probe.count(), 1);
    const auto &box = boxes.probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.text, text);
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::Cancel);
    QCOMPARE(box.defaultButton, QMessageBox::NoButton);
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_desk.get()));
}

void DownloadWidgetFilesTest::anyAnswerButYesStops_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    for (const char *button : {"DelFile", "m_pUpdateFilePB"}) {
        QTest::addRow("%s, Cancel", button) << QByteArray(button) << QMessageBox::Cancel;
        QTest::addRow("%s, closed", button) << QByteArray(button) << QMessageBox::NoButton;
    }
}

void DownloadWidgetFilesTest::anyAnswerButYesStops()
{
    QFETCH(QByteArray, button);
    QFETCH(QMessageBox::StandardButton, answer);
    makeCurrent(1);
    BoxStory boxes;
    boxes.answer(answer);
    press(button);
    QCOMPARE(FakeServices::instance().calls().size(), 1); // the box itself
    QVERIFY(!replacement());
}

void DownloadWidgetFilesTest::aFileIsDeletedFromTheStoreAndThenFromTheRecords()
{
    makeCurrent(1);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    press("DelFile");
    QCOMPARE(BoxStory::text(),
             QStringLiteral("box(\"确认删除此job:board2?\")\n"
                            "Common::MongodbDel(\"database\", \"bucket\", \"file2.tgz\")\n"
                            "Odbpp_JobCompressBll::DelOrigFile(2, \"file2.tgz\", \"guid2\")"));
}

void DownloadWidgetFilesTest::aDeletedRowStaysUntilTheNextSearch()
{
    makeCurrent(1);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    press("DelFile");
    QCOMPARE(fileSearches(), 0);
    QCOMPARE(jobTable(*m_desk)->rowCount(), 3);
    QCOMPARE(jobTable(*m_desk)->currentRow(), 1);
    answerWithFiles(2);
    press("m_pRefreshPB");
    QCOMPARE(jobTable(*m_desk)->rowCount(), 2);
}

void DownloadWidgetFilesTest::theCurrentRowCountsNotTheSelection()
{
    jobTable(*m_desk)->selectAll();
    jobTable(*m_desk)->setCurrentCell(2, 0, QItemSelectionModel::NoUpdate);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    press("DelFile");
    const auto calls = FakeServices::instance().calls("Odbpp_JobCompressBll::DelOrigFile");
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.first().arguments.first().toInt(), 3);
}

void DownloadWidgetFilesTest::theDeletionReadsTheConfigurationForEachValue()
{
    makeCurrent(1);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    press("DelFile");
    QCOMPARE(FakeServices::instance().count("Common::getConfig"), 3);
    QCOMPARE(FakeServices::instance().calls().at(1).name, QStringLiteral("Common::getConfig"));
}

void DownloadWidgetFilesTest::nobodyLooksAtTheDeletionsResults()
{
    FakeServices::instance().result("Common::MongodbDel").always(-1);
    FakeServices::instance().result("Odbpp_JobCompressBll::DelOrigFile").always(0);
    makeCurrent(1);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    press("DelFile");
    QCOMPARE(FakeServices::instance().count("Odbpp_JobCompressBll::DelOrigFile"), 1);
    QCOMPARE(boxes.probe.count(), 1);
}

void DownloadWidgetFilesTest::theRowIsReadBeforeTheQuestion()
{
    makeCurrent(1);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    const auto refill = [] {
        answerWithFiles(1);
        FakeServices::instance().raiseRefreshOrigFileTable();
    };
    boxes.whileOpen("确认删除此job:board2?", refill);
    press("DelFile");
    QCOMPARE(jobTable(*m_desk)->rowCount(), 1);
    QCOMPARE(BoxStory::lines().last(),
             QStringLiteral("Odbpp_JobCompressBll::DelOrigFile(2, \"file2.tgz\", \"guid2\")"));
    answerWithFiles(3);
    press("m_pRefreshPB");
    makeCurrent(2);
    boxes.answer(QMessageBox::Yes);
    boxes.whileOpen("确认更改原始文件:board3吗?", refill);
    press("m_pUpdateFilePB");
    QCOMPARE(data(*replacement()).at(3), QStringLiteral("3"));
}

void DownloadWidgetFilesTest::aDeskThatGoesDuringTheQuestionDoesNothing_data()
{
    theQuestions_data();
}

void DownloadWidgetFilesTest::aDeskThatGoesDuringTheQuestionDoesNothing()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, text);
    makeCurrent(1);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    boxes.whileOpen(text.toUtf8().constData(), [this] { m_desk.reset(); });
    press(button);
    QVERIFY(!m_desk);
    QCOMPARE(FakeServices::instance().calls().size(), 1);
}

void DownloadWidgetFilesTest::theReplacementIsToldTheRow()
{
    makeCurrent(1);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    press("m_pUpdateFilePB");
    QCOMPARE(data(*replacement()),
             QStringList({QStringLiteral("board2"), QStringLiteral("tgz"),
                          QStringLiteral("file2.tgz"), QStringLiteral("2"), QStringLiteral("A1B"),
                          QStringLiteral("guid2"), QStringLiteral("000002")}));
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"确认更改原始文件:board2吗?\")"));
}

void DownloadWidgetFilesTest::theReplacementIsAWindowOfTheDesk()
{
    QVERIFY(!replacement());
    makeCurrent(1);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    press("m_pUpdateFilePB");
    const QPointer<DMS_ModifyFile_Widget> window = replacement();
    QVERIFY(window->isVisible());
    QVERIFY(window->isWindow());
    QCOMPARE(window->parentWidget(), static_cast<QWidget *>(m_desk.get()));
    m_desk.reset();
    QVERIFY(!window);
}

void DownloadWidgetFilesTest::anotherReplacementUsesTheSameWindow()
{
    makeCurrent(1);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    press("m_pUpdateFilePB");
    auto *window = replacement();
    window->close();
    const DataAtShow atShow(window);
    makeCurrent(2);
    boxes.answer(QMessageBox::Yes);
    press("m_pUpdateFilePB");
    QCOMPARE(m_desk->findChildren<DMS_ModifyFile_Widget *>().size(), 1);
    QCOMPARE(replacement(), window);
    QVERIFY(window->isVisible());
    QCOMPARE(atShow.seen.value(0), QStringLiteral("board2")); // shown first, told then
    QCOMPARE(data(*window).first(), QStringLiteral("board3"));
}

void DownloadWidgetFilesTest::nothingIsRefreshedByAReplacement()
{
    makeCurrent(1);
    BoxStory boxes;
    boxes.answer(QMessageBox::Yes);
    press("m_pUpdateFilePB");
    QCOMPARE(fileSearches(), 0);
    QCOMPARE(jobTable(*m_desk)->currentRow(), 1);
}

void DownloadWidgetFilesTest::theFolderIsShown()
{
    QVector<KODMS::UI::CommandLine> lines;
    KODMS::UI::setProgramStarter([&lines](const KODMS::UI::CommandLine &line) {
        lines << line;
        return true;
    });
    makeCurrent(1);
    const BoxStory boxes;
    press("m_pOpenFolderPB");
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().program, QStringLiteral("explorer.exe"));
    QCOMPARE(lines.first().arguments, QStringLiteral("/select , \"d:\\jobs\\\""));
    QCOMPARE(boxes.probe.count(), 0);
    QCOMPARE(FakeServices::instance().calls().size(), 1);
}

void DownloadWidgetFilesTest::theFolderNeedsNoRow()
{
    int started = 0;
    KODMS::UI::setProgramStarter([&started](const KODMS::UI::CommandLine &) { return ++started; });
    jobTable(*m_desk)->setCurrentCell(-1, -1);
    const BoxStory boxes;
    press("m_pOpenFolderPB");
    QCOMPARE(started, 1);
    QCOMPARE(boxes.probe.count(), 0);
}

KODMS_TEST_MAIN(DownloadWidgetFilesTest, QApplication)
#include "DownloadWidgetFilesTest.moc"
