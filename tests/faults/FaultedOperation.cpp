// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/faults/FaultedOperation.h"

#include "foundation/bll/Odbpp_JobCompressBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_OrigFilesBll.h"
#include "foundation/common/Common.h"
#include "foundation/ui/DMS_StdCommon.h"
#include "tests/desks/FileDialogProbe.h"
#include "tests/e2e/DownloadUser.h"
#include "tests/e2e/ExportUser.h"
#include "tests/faults/FaultHouse.h"
#include "tests/faults/YesSayer.h"
#include "tests/odbpp/support/JobFiles.h"

#include <QClipboard>
#include <QDropEvent>
#include <QFileInfo>
#include <QFrame>
#include <QImage>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QUrl>

namespace KODMS::Tests {

namespace {

using Prepare = std::function<void(FaultHouse &)>;
using SitDown = std::function<Scene(FaultHouse &)>;

constexpr char FlowEssence[] =
    "SELECT f.flow_status, f.check_flag, f.orig_job_name, f.last_import_user_id, f.check_user_id, "
    "j.pre_check_flag, j.check_flag, j.layer_count, o.base_name, o.kind, i.base_name, i.kind, "
    "c.orig_name, u.base_name FROM job_flows f JOIN jobs j ON j.name = f.job_name LEFT JOIN "
    "orig_files o ON o.id = f.orig_file_id LEFT JOIN orig_files i ON i.id = f.last_import_file_id "
    "LEFT JOIN job_compress c ON c.flow_id = f.id LEFT JOIN orig_files u ON u.id = c.orig_file_id";

constexpr char QuestionEssence[] =
    "SELECT q.title, q.description, q.answer, q.check_flag, (SELECT count(*) FROM "
    "question_pictures p WHERE p.question_id = q.id) FROM questions q ORDER BY q.title DESC "
    "LIMIT 1";

/// A button that may stand in a window of its own.
void press(const char *name, const QWidget *window)
{
    QTest::mouseClick(window->findChild<QPushButton *>(QLatin1String(name)), Qt::LeftButton);
}

/// The window of this class that stands open; there has to be one.
QWidget *openWindow(const char *className)
{
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->inherits(className))
            return window;
    return nullptr;
}

// Preparations.

Prepare flowAt(int status, int flag)
{
    return [status, flag](FaultHouse &house) {
        house.run(QStringLiteral("UPDATE job_flows SET flow_status = %1, check_flag = %2, "
                                 "orig_job_name = 'board'")
                      .arg(status)
                      .arg(flag));
    };
}

/// The executor of the job, who has no role.
void actAsExecutor(FaultHouse &house)
{
    house.actAs(QStringLiteral("executor"), {});
    house.run(QStringLiteral("INSERT INTO orig_file_assign (flow_id, executor_id, assign_user_id, "
                             "assign_time) SELECT f.id, u.id, u.id, '2026-01-01T00:00:00.000Z' "
                             "FROM job_flows f, users u WHERE u.login_name = 'executor'"));
}

Prepare executorsFlowAt(int status, int flag)
{
    return [status, flag](FaultHouse &house) {
        flowAt(status, flag)(house);
        actAsExecutor(house);
    };
}

// What is done.

Scene atExportDesk(const std::function<void(const ExportUser &)> &act)
{
    const auto user = std::make_shared<ExportUser>();
    user->selectRows({0});
    return {user, [user, act] { act(*user); }};
}

SitDown clickAtExportDesk(const char *button)
{
    return [button](FaultHouse &) {
        return atExportDesk([button](const ExportUser &user) { user.click(button); });
    };
}

Scene atDownloadDesk(const std::function<void(const DownloadUser &)> &act)
{
    const auto user = std::make_shared<DownloadUser>();
    user->selectRows({0});
    return {user, [user, act] { act(*user); }};
}

SitDown clickAtDownloadDesk(const char *button)
{
    return [button](FaultHouse &) {
        return atDownloadDesk([button](const DownloadUser &user) { user.click(button); });
    };
}

void dropOnImportWindow(const QString &path)
{
    const QWidget *window = openWindow("KODMS::UI::DMS_Import_Widget");
    auto *area = window->findChild<QFrame *>(QStringLiteral("importDropArea"));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(area, &enter);
    QDropEvent event(QPointF(9, 9), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(area, &event);
    press("importJob", window);
}

QString boardArchive(const FaultHouse &house)
{
    return house.ownFile(QStringLiteral("board.tgz"), tgzOf(smallJob("P 1 1 0 P 0 0\n")));
}

Scene importArchive(FaultHouse &house)
{
    return atExportDesk([path = boardArchive(house)](const ExportUser &user) {
        user.click("m_pImputPB");
        dropOnImportWindow(path);
    });
}

/// The job has been imported before.
void prepareImported(FaultHouse &house)
{
    executorsFlowAt(0, 0)(house);
    importArchive(house).act();
    house.run(QStringLiteral("UPDATE job_flows SET orig_job_name = 'forgotten'"));
}

Scene importFolder(FaultHouse &house)
{
    return atExportDesk([path = house.ownFolder(QStringLiteral("board"))](const ExportUser &user) {
        user.click("m_pImputPB");
        dropOnImportWindow(path);
    });
}

Scene importResultAgain(FaultHouse &house)
{
    return atDownloadDesk([path = boardArchive(house)](const DownloadUser &user) {
        user.click("m_pRobotImport");
        dropOnImportWindow(path);
    });
}

/// The window stands open with the new file chosen.
Scene replaceBy(const QString &path)
{
    Scene scene = atDownloadDesk([](const DownloadUser &) {
        press("m_pSingleImportPB", openWindow("KODMS::UI::DMS_ModifyFile_Widget"));
    });
    const YesSayer yes;
    FileDialogProbe dialogs;
    dialogs.choose(path);
    scene.user->click("m_pUpdateFilePB");
    press(QFileInfo(path).isDir() ? "m_pOpenDirPB" : "m_pOpenFilePB",
          openWindow("KODMS::UI::DMS_ModifyFile_Widget"));
    return scene;
}

SitDown replaceByFile(const char *name)
{
    return [name](FaultHouse &house) {
        return replaceBy(
            house.ownFile(QLatin1String(name), tgzOf({{QStringLiteral("b.gbr"), "G05"}})));
    };
}

Scene replaceByFolder(FaultHouse &house)
{
    return replaceBy(house.ownFolder(QStringLiteral("newer")));
}

/// Of the steps that follow the replacement itself for a finished job, each can be missing
/// alone: the file is replaced as any other is, and the flow stands where it stood.
void replaceWithoutMoving(FaultHouse &house, const std::function<void()> &isAnEnd)
{
    const std::string stored = Common::commonInterface()->getGUID() + ".kos";
    const std::string file = Common::commonInterface()->getGUID();
    const std::string flow = house.job().flowGuid.toStdString();
    const int user = UI::DMS_StdCommon::interface()->getCurrentUser().id;
    const KODMS_Config config = Common::commonInterface()->getConfig();
    const QString path = house.ownFile(QStringLiteral("newer.kos"), "G05");
    Common::MongodbPut(config.fileStoreDb, config.fileStoreBucket, path.toStdString(), stored);
    DataLib::BLL::Odbpp_OrigFilesBll().inputOrigFile(file, "newer", stored, "kos", "A1B", 0, user);
    DataLib::BLL::Odbpp_JobFlowBll().UpdateOrigFileGuid(file, flow);
    DataLib::BLL::Odbpp_JobCompressBll().UpdateZipUUID_OrigName(1, stored, user, "newer");
    isAnEnd();
    DataLib::BLL::Odbpp_JobFlowBll().UpdateLastOdbppImportMongoFsGuid(file, flow);
    isAnEnd();
}

/// Whether the imported kos file is there is asked before the flow moves on; the administrator
/// who replaces it may do that as a verdict just as well.
constexpr int KosIsAsked = 3;

/// With two pictures from the clipboard.
void raiseQuestion(const ExportUser &user)
{
    user.click("m_pCreateQuestionPB");
    const QWidget *window = openWindow("KODMS::UI::DMS_JobCheck_Widget");
    if (!window)
        return;
    window->findChild<QLineEdit *>(QStringLiteral("questionTitleEdit"))
        ->setText(QStringLiteral("drill"));
    window->findChild<QPlainTextEdit *>(QStringLiteral("questionDescriptionEdit"))
        ->setPlainText(QStringLiteral("too small"));
    QImage picture(40, 30, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    QApplication::clipboard()->setImage(picture);
    press("questionPastePicture", window);
    press("questionPastePicture", window);
    press("questionSubmit", window);
}

void prepareQuestion(FaultHouse &house)
{
    flowAt(1, 0)(house);
    const ExportUser user;
    user.selectRows({0});
    raiseQuestion(user);
}

/// The desk lists the question, and it is the current one.
Scene atQuestion(const std::function<void(const ExportUser &)> &act)
{
    Scene scene = atExportDesk(act);
    scene.user->clickCell(0, ExportUser::JobName);
    scene.user->control<QTableWidget>("m_pQuestionTableWidget")->setCurrentCell(0, 1);
    return scene;
}

void answerQuestion(const ExportUser &user)
{
    user.click("m_pViewQuestionPB");
    const QWidget *window = openWindow("KODMS::UI::DMS_JobCheck_Widget");
    if (!window)
        return;
    window->findChild<QPlainTextEdit *>(QStringLiteral("questionAnswerEdit"))
        ->setPlainText(QStringLiteral("0.25 mm"));
    window->findChild<QComboBox *>(QStringLiteral("questionStateChoice"))->setCurrentIndex(1);
    press("questionSubmit", window);
}

} // namespace

const std::vector<FaultedOperation> &faultedOperations()
{
    static const std::vector<FaultedOperation> operations{
        {"pass", FlowEssence, flowAt(1, 0), clickAtExportDesk("m_pJobPassPB")},
        {"fail", FlowEssence, flowAt(1, 2), clickAtExportDesk("m_pJobUnpassPB")},
        {"export", FlowEssence, flowAt(1, 2), clickAtExportDesk("m_pExportPB")},
        {"import of an archive", FlowEssence, executorsFlowAt(0, 0), importArchive},
        {"import of the same once more", FlowEssence, prepareImported, importArchive},
        {"import of a folder", FlowEssence, executorsFlowAt(0, 0), importFolder},
        {"robot's result once more", FlowEssence, executorsFlowAt(2, 2), importResultAgain},
        {"finish", FlowEssence, executorsFlowAt(2, 2), clickAtDownloadDesk("m_pDownloadPB")},
        {"delete", FlowEssence, flowAt(1, 0), clickAtDownloadDesk("DelFile")},
        {"replace by an archive", FlowEssence, flowAt(1, 0), replaceByFile("newer.tgz"), true},
        {"replace by a finished job", FlowEssence, flowAt(1, 0), replaceByFile("newer.kos"), true,
         replaceWithoutMoving, KosIsAsked},
        {"replace by a folder", FlowEssence, flowAt(1, 0), replaceByFolder},
        {"raise a question", QuestionEssence, flowAt(1, 0),
         [](FaultHouse &) { return atExportDesk(raiseQuestion); }},
        {"answer a question", QuestionEssence, prepareQuestion,
         [](FaultHouse &) { return atQuestion(answerQuestion); }},
        {"resolve a question", QuestionEssence, prepareQuestion,
         [](FaultHouse &) {
             return atQuestion([](const ExportUser &user) { user.click("m_pResolveQuestionPB"); });
         }},
    };
    return operations;
}

} // namespace KODMS::Tests
