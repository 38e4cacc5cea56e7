// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/imports/ImportSession.h"

#include "services/notices/NoticeHub.h"
#include "services/records/TimeText.h"
#include "services/session/Runtime.h"
#include "services/tasks/TaskRunner.h"
#include "services/ui/Question.h"

#include <QFileInfo>
#include <QLocale>

namespace KODMS::Services {

namespace {

constexpr const char *Action = "import.window";

QString causeOf(const Outcome &outcome)
{
    return outcome.cause.isEmpty() ? outcome.text : outcome.cause;
}

} // namespace

/// The session is busy while it lives, if the session lives so long.
class ImportSession::Busy {
public:
    explicit Busy(ImportSession &session) : m_session(&session)
    {
        session.m_isBusy = true;
        session.m_form.setWorking(true);
    }

    ~Busy() { end(); }

    Busy(const Busy &) = delete;
    Busy &operator=(const Busy &) = delete;

    void end()
    {
        if (!m_session)
            return;
        m_session->m_isBusy = false;
        m_session->m_form.setWorking(false);
        m_session.clear();
    }

private:
    QPointer<ImportSession> m_session;
};

ImportSession::ImportSession(ImportKind kind, ImportForm &form, QWidget &window)
    : m_kind(kind), m_form(form), m_window(window)
{
    connect(&form, &ImportForm::pathChosen, this, &ImportSession::choose);
    connect(&form, &ImportForm::importRequested, this, &ImportSession::import);
}

void ImportSession::setTarget(const UI::Import_Info &info)
{
    if (m_isBusy) {
        refuseTarget(info);
        return;
    }
    const QPointer<ImportSession> self(this);
    const bool isOther = info.flowGuid != m_info.flowGuid;
    if (isOther && m_read && !mayDropChoice(info))
        return;
    if (!self)
        return;
    m_info = info;
    m_form.showTarget(info);
    if (!isOther)
        return;
    m_read.reset();
    m_form.showNothing();
}

void ImportSession::refuseTarget(const UI::Import_Info &info)
{
    const QString text = tr("正在导入 %1，完成前不能转到 %2").arg(m_info.jobName, info.jobName);
    reportRefusal(Action, info.flowGuid, QStringLiteral("an import is running"), text);
    m_form.showMessage(text, true);
}

bool ImportSession::mayDropChoice(const UI::Import_Info &info)
{
    return ask(tr("为 %1 选择的 %2 尚未导入，放弃并转到 %3？")
                   .arg(m_info.jobName, QFileInfo(m_read->path).fileName(), info.jobName));
}

bool ImportSession::ask(const QString &text)
{
    const Busy busy(*this);
    return askYesNo(m_window, tr("导入"), text);
}

void ImportSession::choose(const QString &path)
{
    Runtime *runtime = Runtime::current();
    if (m_isBusy || !runtime)
        return;
    const QPointer<ImportSession> self(this);
    m_read.reset();
    m_form.showNothing();
    Result<ReadJob> read = Outcome::success();
    Outcome outcome;
    {
        const Busy busy(*this);
        const LimitSettings limits = runtime->configuration().limits;
        outcome = TaskRunner::instance().run(tr("读取 %1").arg(QFileInfo(path).fileName()),
                                             [&](Progress &progress) {
                                                 read = ReadJob::at(path, limits, progress);
                                                 return read.outcome;
                                             });
    }
    if (!self)
        return;
    if (!outcome) {
        m_form.showRefusal(path, outcome.text);
        return;
    }
    m_read = read.value;
    m_form.showJob(read.value);
}

void ImportSession::import()
{
    Runtime *runtime = Runtime::current();
    if (m_isBusy || !m_read || !runtime)
        return;
    const QPointer<ImportSession> self(this);
    const ReadJob read = *m_read;
    Outcome outcome;
    {
        const Busy busy(*this);
        JobImport run(*runtime, m_info.flowGuid, m_kind, read);
        outcome = run.mayBegin();
        if (outcome)
            outcome = storeAndRecord(run, read);
    }
    if (!self)
        return;
    if (outcome)
        finish(read);
    else if (outcome.isCancelled)
        m_form.showAbandoned(outcome.text);
    else
        m_form.showMessage(outcome.text, true);
}

/// Touches nothing of the session once the window is gone.
Outcome ImportSession::storeAndRecord(JobImport &run, const ReadJob &read)
{
    const QPointer<ImportSession> self(this);
    const Outcome gone = Outcome::failure(tr("窗口已关闭，未导入"));
    if (Outcome stored = storeInTask(run, read); !stored)
        return stored;
    if (!self)
        return gone;
    const auto earlier = run.sameBefore();
    if (!earlier)
        return earlier.outcome;
    if (earlier.value) {
        if (!confirmsSame(*earlier.value))
            return {false, tr("未导入"), {}, true};
        if (!self)
            return gone;
    }
    return run.record();
}

Outcome ImportSession::storeInTask(JobImport &run, const ReadJob &read)
{
    const QPointer<ImportSession> self(this);
    bool isCancelled = false;
    const Outcome stored =
        TaskRunner::instance().run(tr("导入 %1").arg(read.job.name), [&](Progress &progress) {
            Outcome outcome = run.store(progress);
            isCancelled = progress.isCancelled();
            return outcome;
        });
    // What the person at the screen has cancelled needs no notice.
    if (!stored && !isCancelled && self)
        reportFailure(lcFileStore(), Action, m_info.flowGuid, causeOf(stored),
                      tr("导入 %1：%2").arg(m_info.jobName, stored.text));
    return stored;
}

bool ImportSession::confirmsSame(const EarlierImport &earlier)
{
    const QString time = shownTime(earlier.time);
    const QString text =
        earlier.isOtherFlow
            ? tr("相同的内容已由 %1 于 %2 为 %3 导入过，仍要为 %4 导入吗？")
                  .arg(earlier.realName, time, earlier.jobName, m_info.jobName)
            : tr("相同的内容已由 %1 于 %2 导入过，仍要再次导入吗？").arg(earlier.realName, time);
    return askYesNo(m_window, tr("导入"), text);
}

void ImportSession::finish(const ReadJob &read)
{
    m_read.reset();
    m_info.origJobName = read.job.name;
    m_form.showTarget(m_info);
    m_form.showNothing();
    m_form.showMessage(tr("已为 %1 导入 %2：%3 层，%4 个特征")
                           .arg(m_info.jobName, read.job.name)
                           .arg(read.job.layerCount())
                           .arg(QLocale().toString(read.job.featureCount)),
                       false);
    Q_EMIT imported(m_info.isWeb);
}

} // namespace KODMS::Services
