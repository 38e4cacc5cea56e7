// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/RaiseSession.h"

#include "services/records/bll/QuestionChanges.h"
#include "services/session/Runtime.h"
#include "services/tasks/TaskRunner.h"
#include "services/ui/questions/PictureWindow.h"
#include "services/ui/questions/QuestionFiling.h"

namespace KODMS::Services {

namespace {

Outcome notRunning()
{
    return Outcome::failure(RaiseSession::tr("服务尚未启动"));
}

} // namespace

RaiseSession::RaiseSession(RaiseForm &form, QWidget &window)
    : QuestionSession("question.raise", window), m_form(form)
{
    connect(&form, &RaiseForm::picturesBrought, this, &RaiseSession::takePictures);
    connect(&form, &RaiseForm::pictureOpened, this, &RaiseSession::openPicture);
    connect(&form, &RaiseForm::pictureRemoved, this, &RaiseSession::removePicture);
    connect(&form, &RaiseForm::submitted, this, &RaiseSession::submit);
    form.showTarget(QString());
}

bool RaiseSession::hasDraft() const
{
    return !m_form.title().trimmed().isEmpty() || !m_form.description().trimmed().isEmpty() ||
           !m_pictures.isEmpty();
}

/// A job that no question may be raised on is said, and what was written for another
/// one stays.
void RaiseSession::retarget(int flowId)
{
    if (isBusy()) {
        refuseBusy(flowId);
        return;
    }
    const bool isOther = flowId != shownId();
    const auto allowed = QuestionChanges::mayRaise(flowId);
    const QPointer<RaiseSession> self(this);
    if (allowed && isOther && hasDraft() &&
        !ask(tr("为 %1 填写的问题尚未保存，放弃并转到 %2？").arg(m_jobName, allowed.value)))
        return;
    if (!self)
        return;
    if (allowed)
        point(flowId, allowed.value);
    else if (isOther && !hasDraft())
        point(0, QString());
    if (!allowed)
        say(allowed.text(), true);
}

/// What is written for the same job stays.
void RaiseSession::point(int flowId, const QString &jobName)
{
    const bool isOther = flowId != shownId();
    setShownId(flowId);
    m_jobName = jobName;
    m_form.showTarget(jobName);
    if (!isOther)
        return;
    m_pictures.clear();
    m_form.clear();
}

void RaiseSession::takePictures(const BroughtPictures &brought)
{
    if (isBusy() || shownId() == 0)
        return;
    const QPointer<RaiseSession> self(this);
    QStringList refused;
    if (brought.elsewhere > 0)
        refused << tr("只能使用本机上的图片");
    const auto read =
        readPictures(brought, QuestionChanges::MostPictures - m_pictures.size(), refused);
    if (!self)
        return;
    if (!read && !read.outcome.isCancelled)
        refused << read.text();
    m_pictures << read.value;
    m_form.showPictures(m_pictures);
    say(refused.join(QLatin1Char('\n')), true);
}

/// A picture that is none does not stand in the way of the others.
Result<QVector<PictureFile>> RaiseSession::readPictures(const BroughtPictures &brought, int room,
                                                        QStringList &refused)
{
    const Busy busy(*this);
    const QString pastedName = tr("粘贴的图片 %1.png").arg(m_pictures.size() + 1);
    QVector<PictureFile> pictures;
    QStringList bad;
    const auto add = [&](const Result<PictureFile> &picture) {
        if (picture && pictures.size() < room)
            pictures << picture.value;
        else
            bad << (picture ? tr("图片过多，最多 %1 张").arg(QuestionChanges::MostPictures)
                            : picture.text());
    };
    const Outcome done = TaskRunner::instance().run(tr("读取图片"), [&](Progress &progress) {
        if (!brought.image.isNull())
            add(PictureFile::fromImage(brought.image, pastedName));
        for (const QString &path : brought.paths) {
            if (progress.isCancelled())
                return Outcome::failure(tr("已取消"));
            add(PictureFile::fromFile(path));
        }
        return Outcome::success();
    });
    bad.removeDuplicates();
    refused << bad;
    if (!done)
        return done;
    return pictures;
}

void RaiseSession::removePicture(int index)
{
    if (isBusy() || index < 0 || index >= m_pictures.size())
        return;
    m_pictures.remove(index);
    m_form.showPictures(m_pictures);
}

void RaiseSession::openPicture(int index)
{
    if (isBusy() || index < 0 || index >= m_pictures.size())
        return;
    const PictureFile &picture = m_pictures.at(index);
    const auto image = PictureFile::decode(picture.bytes, QSize());
    if (image)
        showPicture(image.value, picture.fileName, window());
    else
        say(image.text(), true);
}

void RaiseSession::submit()
{
    if (isBusy() || shownId() == 0)
        return;
    const QPointer<RaiseSession> self(this);
    const QString title = m_form.title().trimmed();
    const auto raised = file();
    if (!self)
        return;
    if (!raised) {
        say(raised.text(), true);
        return;
    }
    m_pictures.clear();
    m_form.clear();
    say(tr("已为 %1 创建问题：%2").arg(m_jobName, title), false);
}

/// Whatever fails leaves neither records nor stored pictures, and the form as it is.
Result<int> RaiseSession::file()
{
    Runtime *runtime = Runtime::current();
    if (!runtime)
        return notRunning();
    if (m_form.title().trimmed().isEmpty())
        return Outcome::failure(tr("请填写标题"));
    if (const auto allowed = QuestionChanges::mayRaise(shownId()); !allowed)
        return allowed.outcome;
    const QPointer<RaiseSession> self(this);
    const Busy busy(*this);
    QuestionFiling filing(*runtime, shownId(), m_form.title(), m_form.description());
    if (Outcome stored = storePictures(filing); !stored)
        return stored;
    if (!self)
        return Outcome::failure(tr("窗口已关闭，未创建"));
    return filing.record();
}

Outcome RaiseSession::storePictures(QuestionFiling &filing)
{
    if (m_pictures.isEmpty())
        return Outcome::success();
    const QPointer<RaiseSession> self(this);
    const QVector<PictureFile> pictures = m_pictures;
    Outcome stored =
        TaskRunner::instance().run(tr("保存图片"), [&filing, &pictures](Progress &progress) {
            return filing.store(pictures, progress);
        });
    if (!stored && self)
        sayFailed(m_jobName, stored);
    return stored;
}

} // namespace KODMS::Services
