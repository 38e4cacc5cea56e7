// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ScreenshotRun.h"

#include "apps/desk/AboutBox.h"
#include "apps/desk/HandOverLog.h"
#include "apps/desk/IntakeDialog.h"
#include "apps/desk/MainWindow.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/NoticePanel.h"
#include "apps/desk/Preferences.h"
#include "apps/desk/ShortcutsBox.h"
#include "apps/desk/SignInWindow.h"
#include "desks/export/DMS_Export_Widget.h"
#include "desks/modifyfile/DMS_ModifyFile_Widget.h"
#include "foundation/ui/DMS_Import_Widget.h"
#include "foundation/ui/DMS_JobCheck_Widget.h"
#include "foundation/ui/DMS_StdCommon.h"
#include "foundation/ui/DMS_UICommon.h"
#include "foundation/ui/Import_Info.h"
#include "services/api/InstallationSetup.h"
#include "services/api/Intake.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

#include <QCoreApplication>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QPixmap>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QVector>

#include <cstdio>
#include <utility>

namespace KODMS::Host {

namespace {

const QSize DeskSize(1360, 900);
const QSize ImportSize(600, 400); // as the desks open it

/// Of the job-flow desk's tables.
constexpr int IdColumn = 0;
constexpr int JobNameColumn = 1;
constexpr int FlowGuidColumn = 8;
constexpr int RemarkColumn = 12;

void settle()
{
    for (int round = 0; round < 5; ++round)
        QCoreApplication::processEvents();
}

const Services::SampleAccount *accountWith(const QVector<Services::SampleAccount> &accounts,
                                           const QStringList &roles)
{
    for (const Services::SampleAccount &account : accounts) {
        if (account.roles == roles)
            return &account;
    }
    return nullptr;
}

QTableWidget *jobTable(const QWidget &window)
{
    return window.findChild<UI::DMS_Export_Widget *>()->findChild<QTableWidget *>(
        QStringLiteral("m_pJobTableWidget"));
}

/// A desk at work: the first job of the page that has questions is clicked.
void clickJobWithQuestions(const QWidget &window)
{
    const auto *desk = window.findChild<UI::DMS_Export_Widget *>();
    auto *jobs = jobTable(window);
    const auto *questions =
        desk->findChild<QTableWidget *>(QStringLiteral("m_pQuestionTableWidget"));
    for (int row = 0; row < jobs->rowCount() && questions->rowCount() == 0; ++row) {
        jobs->selectRow(row);
        Q_EMIT jobs->itemClicked(jobs->item(row, 1));
    }
    if (questions->rowCount() == 0)
        jobs->clearSelection();
}

bool complain(const QString &text)
{
    std::fprintf(stderr, "kodms-desk: %s\n", qPrintable(text));
    return false;
}

} // namespace

ScreenshotRun::ScreenshotRun(QString folder, NoticeLog &notices, HandOverLog &handOvers)
    : m_folder(std::move(folder)), m_notices(notices), m_handOvers(handOvers)
{
}

int ScreenshotRun::run()
{
    if (!Services::ServiceRuntime::instance().isSample()) {
        complain(QStringLiteral("--screenshots works on a sample installation only"));
        return 1;
    }
    if (!QDir().mkpath(m_folder)) {
        complain(QStringLiteral("cannot make the folder ") + m_folder);
        return 1;
    }
    // Pictures do not depend on what somebody's session left behind.
    const QTemporaryDir scratch;
    Preferences preferences(scratch.filePath(QStringLiteral("kodms-desk.ini")));
    return renderSignIn() && renderDesks(preferences) ? 0 : 1;
}

bool ScreenshotRun::renderSignIn()
{
    SignInWindow window;
    window.prepare(QString());
    return save(window, QStringLiteral("sign-in"));
}

bool ScreenshotRun::renderDesks(Preferences &preferences)
{
    const QString config = Services::ServiceRuntime::instance().configPath();
    const auto accounts = Services::InstallationSetup::sampleAccounts(QFileInfo(config).path());
    if (!accounts)
        return complain(accounts.text());
    const QPair<QString, QStringList> wanted[] = {
        {QStringLiteral("user"), {}},
        {QStringLiteral("preprocessor"), {QStringLiteral("pre-process")}},
        {QStringLiteral("reviewer"), {QStringLiteral("check-authority")}},
        {QStringLiteral("admin"), {QStringLiteral("admin")}}};
    for (const auto &one : wanted) {
        const Services::SampleAccount *account = accountWith(accounts.value, one.second);
        if (!account)
            return complain(QStringLiteral("no demo account for ") + one.first);
        if (!renderDesk(*account, one.first, preferences))
            return false;
    }
    return true;
}

bool ScreenshotRun::renderDesk(const Services::SampleAccount &account, const QString &name,
                               Preferences &preferences)
{
    const Services::Outcome outcome = Services::SignIn::signIn(account.loginName, account.password);
    if (!outcome)
        return complain(outcome.text);
    bool saved = false;
    {
        MainWindow window(preferences, m_notices, m_handOvers);
        window.resize(DeskSize);
        clickJobWithQuestions(window);
        saved = save(window, QStringLiteral("desk-") + name) &&
                saveSecondDesk(window, QStringLiteral("files-") + name);
        if (saved && account.roles.contains(QStringLiteral("admin")))
            saved = renderExtras(window);
    }
    Services::SignIn::signOut();
    return saved;
}

bool ScreenshotRun::saveSecondDesk(MainWindow &window, const QString &name)
{
    auto *desks = window.findChild<QTabWidget *>(QStringLiteral("deskTabs"));
    desks->setCurrentIndex(1);
    const bool saved = save(window, name);
    desks->setCurrentIndex(0);
    return saved;
}

/// The notice list shows what the services really say: a refusal, an error and a job
/// for the CAM side.
void ScreenshotRun::provokeNotices()
{
    Services::IntakeRequest request;
    request.path = Services::ServiceRuntime::instance().configPath();
    request.customerCode = QStringLiteral("A1B");
    m_log.provoking(true);
    const auto refused = Services::Intake::take(request);
    if (refused)
        complain(QStringLiteral("a configuration file was taken in as an archive"));
    UI::DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName("web000001", "no-such-file.zip", "zip");
    m_log.provoking(false);
    UI::DMS_UICommon::interface()->sendemitCAMExportJobInfo(QStringLiteral("web000001"), 1);
}

/// As a morning's downloads leave it.
bool ScreenshotRun::saveHandOvers(MainWindow &window)
{
    UI::DMS_UICommon *hub = UI::DMS_UICommon::interface();
    const QString root = QStringLiteral("/srv/kodms/download/");
    hub->inputNewJob(QStringLiteral("A1B000017"),
                     root + QStringLiteral("A1B000017/A1B000017/layer"));
    hub->importNewJob(
        root + QStringLiteral("web000004/控制板 V2.1 (2024-03-18).tgz|thickness=1.6;copper=35"),
        QStringLiteral("web000004"));
    hub->inputNewJob(QStringLiteral("web000009"),
                     root + QStringLiteral("web000009|thickness=0.8;copper=18"));
    window.showHandOvers();
    auto *list = window.findChild<QTableView *>(QStringLiteral("handOvers"));
    list->selectRow(1);
    const bool saved = save(window, QStringLiteral("hand-over"));
    window.findChild<QDockWidget *>(QStringLiteral("noticePanel"))->hide();
    return saved && save(window, QStringLiteral("hand-over-alone"));
}

/// Of the first job, with what this user has done to it.
bool ScreenshotRun::saveHistory(MainWindow &window)
{
    window.findChild<QDockWidget *>(QStringLiteral("handOverPanel"))->hide();
    auto *jobs = jobTable(window);
    jobs->setCurrentCell(0, JobNameColumn);
    for (const QString &text : {QStringLiteral("加急"), QStringLiteral("加急，周五前交货")}) {
        if (QTableWidgetItem *item = jobs->item(0, RemarkColumn)) // a sample may have no job yet
            item->setText(text);
    }
    window.showHistory();
    return save(window, QStringLiteral("history"));
}

/// The windows that the desks open for a job, for the one whose history was shown.
bool ScreenshotRun::saveJobWindows(const MainWindow &window)
{
    UI::DMS_ModifyFile_Widget replacement(nullptr);
    if (!save(replacement, QStringLiteral("replace-file")))
        return false;
    const auto *jobs = jobTable(window);
    const int row = jobs->currentRow();
    if (row < 0) // a sample may have no job yet
        return true;
    const auto text = [jobs, row](int column) { return jobs->item(row, column)->text(); };
    UI::Import_Info info;
    info.jobName = text(JobNameColumn);
    info.flowGuid = text(FlowGuidColumn);
    UI::DMS_Import_Widget import;
    import.resize(ImportSize);
    import.setFlowGuid(info);
    return save(import, QStringLiteral("import")) && saveQuestions(window, text(IdColumn).toInt());
}

bool ScreenshotRun::saveQuestions(const MainWindow &window, int flowId)
{
    UI::DMS_JobCheck_Widget raise(flowId, false, nullptr);
    if (!save(raise, QStringLiteral("question-new")))
        return false;
    clickJobWithQuestions(window);
    const auto *questions =
        window.findChild<QTableWidget *>(QStringLiteral("m_pQuestionTableWidget"));
    if (questions->rowCount() == 0)
        return true;
    UI::DMS_JobCheck_Widget view(questions->item(0, IdColumn)->text().toInt(), true, nullptr);
    view.getQuestionData();
    return save(view, QStringLiteral("question"));
}

bool ScreenshotRun::renderExtras(MainWindow &window)
{
    window.setHighContrastStatus(true);
    bool saved = save(window, QStringLiteral("desk-high-contrast"));
    window.setHighContrastStatus(false);
    provokeNotices();
    window.showNotices();
    saved = saved && save(window, QStringLiteral("notices"));
    saved = saved && saveHandOvers(window);
    saved = saved && saveHistory(window);
    saved = saved && saveJobWindows(window);
    {
        IntakeDialog dialog(&window);
        saved = saved && save(dialog, QStringLiteral("intake"));
    }
    {
        ShortcutsBox keys(window);
        saved = saved && save(keys, QStringLiteral("shortcuts"));
    }
    AboutBox about(&window);
    return saved && save(about, QStringLiteral("about"));
}

bool ScreenshotRun::save(QWidget &window, const QString &name)
{
    window.show();
    settle();
    const QString file = QDir(m_folder).filePath(name + QStringLiteral(".png"));
    const bool saved = window.grab().save(file);
    return saved || complain(QStringLiteral("cannot write ") + file);
}

} // namespace KODMS::Host
