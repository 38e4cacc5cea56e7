// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/ModifyFileWorld.h"
#include "tests/desks/PrivateMember.h"
#include "tests/desks/RobotPeer.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QLineEdit>

namespace KODMS::Tests {

struct ModifyMode {
    using Type = int UI::DMS_ModifyFile_Widget::*;
};

template struct OpenMember<ModifyMode, &UI::DMS_ModifyFile_Widget::m_Mode>;

} // namespace KODMS::Tests

using namespace KODMS::Tests;
using KODMS::Fakes::Call;
using KODMS::Fakes::MessageBoxProbe;

/// What the import button goes by, from choice to choice and row to row.
class ModifyFileWidgetLifeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_world = std::make_unique<ModifyFileWorld>(); }

    void cleanup() { m_world.reset(); }

    void withoutAChoiceNothingHappens();
    void aTypedPathIsNoChoice();
    void aFailedCopyIsNotNoticed();
    void nobodyLooksAtResults_data();
    void nobodyLooksAtResults();
    void theSuccessBox();
    void theLastChoiceCounts();
    void anotherModeThanTheseTwoDoesNothing();
    void theLastRowCounts();
    void theConfigurationIsReadAfresh();
    void theRowIsReadBeforeTheFileIsStored_data();
    void theRowIsReadBeforeTheFileIsStored();
    void aWindowThatGoesMeanwhileStillRecordsTheFile_data();
    void aWindowThatGoesMeanwhileStillRecordsTheFile();

private:
    std::unique_ptr<ModifyFileWorld> m_world;
};

namespace {

/// The steps whose results could be looked at.
const char *const ArchiveSteps[] = {"Common::MongodbPut",
                                    "Odbpp_OrigFilesBll::inputOrigFile",
                                    "Odbpp_JobFlowBll::UpdateOrigFileGuid",
                                    "Odbpp_JobFlowBll::UpdateLastOdbppImportMongoFsGuid",
                                    "Odbpp_JobFlowBll::UpdateState",
                                    "Odbpp_JobCompressBll::UpdateZipUUID_OrigName"};

} // namespace

void ModifyFileWidgetLifeTest::withoutAChoiceNothingHappens()
{
    const MessageBoxProbe probe;
    m_world->import();
    QVERIFY(FakeServices::instance().calls().isEmpty());
    QCOMPARE(probe.count(), 0);
}

/// The mode is that of files, and the chosen path is empty: it has no suffix.
void ModifyFileWidgetLifeTest::aTypedPathIsNoChoice()
{
    const MessageBoxProbe probe;
    control<QLineEdit>(*m_world->window, "m_pPathLE")
        ->setText(m_world->made(QStringLiteral("board.zip")));
    m_world->import();
    QVERIFY(FakeServices::instance().calls().isEmpty());
    QCOMPARE(probe.texts(), QStringList(QStringLiteral("修改文件成功!")));
}

void ModifyFileWidgetLifeTest::aFailedCopyIsNotNoticed()
{
    FakeServices::instance().config.stagingDir = "/nowhere/at/all/";
    m_world->choose(m_world->made(QStringLiteral("board.zip")));
    const MessageBoxProbe probe;
    m_world->import();
    QCOMPARE(callNames().size(), 6);
    QCOMPARE(
        FakeServices::instance().calls("Common::MongodbPut").first().arguments.at(2).toString(),
        QStringLiteral("/nowhere/at/all/g1.zip"));
    QCOMPARE(probe.texts(), QStringList(QStringLiteral("修改文件成功!")));
}

void ModifyFileWidgetLifeTest::nobodyLooksAtResults_data()
{
    QTest::addColumn<QByteArray>("step");
    for (const char *step : ArchiveSteps)
        QTest::newRow(step) << QByteArray(step);
}

void ModifyFileWidgetLifeTest::nobodyLooksAtResults()
{
    QFETCH(QByteArray, step);
    FakeServices::instance().result(step.constData()).always(step.startsWith("Common") ? -1 : 0);
    m_world->choose(m_world->made(QStringLiteral("board.kos")));
    const MessageBoxProbe probe;
    m_world->import();
    QCOMPARE(callNames().size(), 8);
    QCOMPARE(probe.texts(), QStringList(QStringLiteral("修改文件成功!")));
}

void ModifyFileWidgetLifeTest::theSuccessBox()
{
    m_world->choose(m_world->made(QStringLiteral("board.zip")));
    const MessageBoxProbe probe;
    m_world->import();
    QCOMPARE(probe.count(), 1);
    const auto &box = probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("修改文件"));
    QCOMPARE(box.text, QStringLiteral("修改文件成功!"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_world->window.get()));
}

void ModifyFileWidgetLifeTest::theLastChoiceCounts()
{
    const MessageBoxProbe probe;
    m_world->choose(m_world->madeFolder("job12"));
    m_world->choose(m_world->made(QStringLiteral("board.zip")));
    m_world->import();
    QCOMPARE(callNames().at(1), QStringLiteral("MongodbPut"));
    m_world->import();
    QCOMPARE(callNames().size(), 12); // the choice is still there
    m_world->choose(m_world->madeFolder("job12"));
    FakeServices::instance().forgetCalls();
    m_world->import();
    QCOMPARE(callNames().first(), QStringLiteral("FoldersCompressSave2MongoDb"));
}

void ModifyFileWidgetLifeTest::anotherModeThanTheseTwoDoesNothing()
{
    const auto mode = privateMember<ModifyMode>;
    QCOMPARE((*m_world->window).*mode, 0);
    m_world->choose(m_world->madeFolder("job12"));
    QCOMPARE((*m_world->window).*mode, 1);
    m_world->choose(m_world->made(QStringLiteral("board.zip")));
    QCOMPARE((*m_world->window).*mode, 0);
    const MessageBoxProbe probe;
    for (int other : {-1, 2}) {
        (*m_world->window).*mode = other;
        m_world->import();
    }
    QVERIFY(FakeServices::instance().calls().isEmpty());
    QCOMPARE(probe.count(), 0);
}

void ModifyFileWidgetLifeTest::theLastRowCounts()
{
    const MessageBoxProbe probe;
    m_world->choose(m_world->made(QStringLiteral("board.zip")));
    m_world->window->setData(QStringLiteral("other"), QStringLiteral("zip"),
                             QStringLiteral("x.zip"), QStringLiteral("8"), QStringLiteral("C2D"),
                             QStringLiteral("flow8"), QStringLiteral("000008"));
    m_world->import();
    const QStringList lines = FakeServices::instance().operationLines();
    QVERIFY(lines.at(3).contains(QStringLiteral("\"C2D\"")));
    QVERIFY(lines.at(4).contains(QStringLiteral("\"flow8\"")));
    QVERIFY(lines.at(5).contains(QStringLiteral("(8,")));
}

void ModifyFileWidgetLifeTest::theConfigurationIsReadAfresh()
{
    const MessageBoxProbe probe;
    m_world->choose(m_world->made(QStringLiteral("board.zip")));
    m_world->import();
    FakeServices::instance().config.fileStoreBucket = "other bucket";
    m_world->import();
    const auto puts = FakeServices::instance().calls("Common::MongodbPut");
    QCOMPARE(puts.at(0).arguments.at(1).toString(), QStringLiteral("bucket"));
    QCOMPARE(puts.at(1).arguments.at(1).toString(), QStringLiteral("other bucket"));
}

void ModifyFileWidgetLifeTest::theRowIsReadBeforeTheFileIsStored_data()
{
    QTest::addColumn<bool>("isFolder");
    QTest::newRow("archive") << false;
    QTest::newRow("folder") << true;
}

/// Storing can take long, and the desk can hand over another row meanwhile.
void ModifyFileWidgetLifeTest::theRowIsReadBeforeTheFileIsStored()
{
    QFETCH(bool, isFolder);
    m_world->choose(isFolder ? m_world->madeFolder("board")
                             : m_world->made(QStringLiteral("board.zip")));
    const auto anotherRow = [this](const Call &) {
        m_world->window->setData(QString(), QString(), QString(), QStringLiteral("8"),
                                 QStringLiteral("C2D"), QStringLiteral("flow8"), QString());
        return 0;
    };
    FakeServices::instance().result("Common::MongodbPut").compute(anotherRow);
    FakeServices::instance().result("Common::FoldersCompressSave2MongoDb").compute(anotherRow);
    const MessageBoxProbe probe;
    m_world->import();
    const QStringList lines = FakeServices::instance().operationLines();
    QVERIFY(lines.filter(QStringLiteral("inputOrigFile")).first().contains(QStringLiteral("A1B")));
    QVERIFY(lines.filter(QStringLiteral("UpdateOrigFileGuid"))
                .first()
                .contains(QStringLiteral("flow7")));
    QVERIFY(lines.last().contains(QStringLiteral("(7,")));
}

void ModifyFileWidgetLifeTest::aWindowThatGoesMeanwhileStillRecordsTheFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("archive") << QStringLiteral("board.zip");
    QTest::newRow("kos archive") << QStringLiteral("board.kos");
    QTest::newRow("folder") << QString();
}

/// A stored file that nobody records would lie in the store for nothing.
void ModifyFileWidgetLifeTest::aWindowThatGoesMeanwhileStillRecordsTheFile()
{
    QFETCH(QString, name);
    m_world->choose(name.isEmpty() ? m_world->madeFolder("board") : m_world->made(name));
    RobotPeer robot(RobotPeer::Manner::AnswersAtOnce);
    listenAs(robot);
    const auto gone = [this](const Call &) {
        m_world->window.reset();
        return 0;
    };
    FakeServices::instance().result("Common::MongodbPut").compute(gone);
    FakeServices::instance().result("Common::FoldersCompressSave2MongoDb").compute(gone);
    const MessageBoxProbe probe;
    m_world->import();
    QVERIFY(!m_world->window);
    QCOMPARE(callNames().last(), QStringLiteral("UpdateZipUUID_OrigName"));
    QCOMPARE(FakeServices::instance().count("Odbpp_JobFlowBll::UpdateOrigFileGuid"), 1);
    QCOMPARE(robot.connections(), 0);
    QCOMPARE(probe.count(), 0);
}

KODMS_TEST_MAIN(ModifyFileWidgetLifeTest, QApplication)
#include "ModifyFileWidgetLifeTest.moc"
