// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/AnswerSession.h"

#include "services/records/bll/QuestionChanges.h"
#include "services/session/Runtime.h"
#include "services/tasks/TaskRunner.h"
#include "services/ui/questions/PictureStrip.h"
#include "services/ui/questions/PictureWindow.h"
#include "services/ui/questions/StoredPicture.h"

#include <vector>

namespace KODMS::Services {

namespace {

using Images = std::vector<Result<QImage>>;

/// In the order of `pictures`; each says what became of it.
Images readPictures(Runtime &runtime, const QVector<QuestionPicture> &pictures, const QSize &bound)
{
    Outcome unread = Outcome::failure(AnswerSession::tr("未读取"));
    unread.isCancelled = true;
    Images images(static_cast<std::size_t>(pictures.size()), unread);
    const FileStore &store = runtime.fileStore();
    const QString folder = runtime.configuration().paths.staging;
    const Outcome read =
        TaskRunner::instance().run(AnswerSession::tr("读取图片"), [&](Progress &progress) {
            auto image = images.begin();
            for (const QuestionPicture &picture : pictures) {
                if (progress.isCancelled())
                    break;
                *image++ = readStoredPicture(store, picture.storedName, folder, bound, progress);
            }
            return Outcome::success();
        });
    for (Result<QImage> &image : images) {
        if (read.isCancelled)
            image.outcome.isCancelled = true;
        else if (!read && image.outcome.isCancelled)
            image.outcome = read; // the work ended before this one's turn
    }
    return images;
}

} // namespace

AnswerSession::AnswerSession(AnswerForm &form, QWidget &window)
    : QuestionSession("question.answer", window), m_form(form)
{
    connect(&form, &AnswerForm::pictureOpened, this, &AnswerSession::openPicture);
    connect(&form, &AnswerForm::submitted, this, &AnswerSession::submit);
}

/// A question that cannot be read is said, and an answer that was written for the one
/// that is shown stays.
void AnswerSession::retarget(int questionId)
{
    if (isBusy()) {
        refuseBusy(questionId);
        return;
    }
    const auto read = QuestionChanges::read(questionId);
    const bool isOther = questionId != shownId();
    const QPointer<AnswerSession> self(this);
    if (read && isOther && m_form.hasDraft() &&
        !ask(tr("对“%1”的回复尚未提交，放弃并转到“%2”？").arg(m_page.title, read.value.title)))
        return;
    if (!self)
        return;
    if (read) {
        say(QString(), false);
        show(read.value);
        return;
    }
    if (!m_form.hasDraft()) {
        setShownId(0);
        m_page = {};
        m_form.showNothing();
    }
    say(read.text(), true);
}

void AnswerSession::show(const QuestionPage &page)
{
    const bool isOther = page.id != shownId();
    setShownId(page.id);
    m_page = page;
    if (Runtime *runtime = Runtime::current())
        m_userId = runtime->records().actor().userId;
    m_form.showQuestion(page);
    if (isOther)
        m_form.clearAnswer();
    showPictures(page.pictures);
}

void AnswerSession::showPictures(const QVector<QuestionPicture> &pictures)
{
    Runtime *runtime = Runtime::current();
    if (pictures.isEmpty() || !runtime)
        return;
    const QPointer<AnswerSession> self(this);
    Images images;
    {
        const Busy busy(*this);
        images = readPictures(*runtime, pictures, PictureFile::ThumbnailSize);
    }
    if (!self)
        return;
    auto image = images.cbegin();
    for (const QuestionPicture &picture : pictures) {
        addPicture(picture, *image);
        ++image;
    }
}

void AnswerSession::addPicture(const QuestionPicture &picture, const Result<QImage> &image)
{
    if (image) {
        m_form.pictures().add(image.value, picture.fileName);
        return;
    }
    m_form.pictures().addBroken(picture.fileName, image.text());
    sayUnread(picture, image.outcome);
}

void AnswerSession::sayUnread(const QuestionPicture &picture, const Outcome &failed)
{
    Outcome named = failed;
    named.text = tr("图片 %1：%2").arg(picture.fileName, failed.text);
    sayFailed(picture.storedName, named);
}

void AnswerSession::openPicture(int index)
{
    Runtime *runtime = Runtime::current();
    if (isBusy() || !runtime || index < 0 || index >= m_page.pictures.size())
        return;
    const QPointer<AnswerSession> self(this);
    const QuestionPicture picture = m_page.pictures.at(index);
    Images images;
    {
        const Busy busy(*this);
        images = readPictures(*runtime, {picture}, QSize());
    }
    if (!self)
        return;
    if (images.front())
        showPicture(images.front().value, picture.fileName, window());
    else
        sayUnread(picture, images.front().outcome);
}

void AnswerSession::submit()
{
    if (isBusy() || shownId() == 0)
        return;
    bool isOvertaken = false;
    const QuestionAnswer answer{m_page.id, m_userId, m_page.version, m_form.answer(),
                                m_form.checkFlag()};
    const Outcome answered = QuestionChanges::answer(answer, isOvertaken);
    if (!answered && !isOvertaken) {
        say(answered.text, true);
        return;
    }
    if (answered)
        m_form.clearAnswer();
    reload(answered ? tr("已提交") : answered.text, !answered);
}

/// Shows the question as it stands now; an answer that was not taken stays written.
void AnswerSession::reload(const QString &text, bool isError)
{
    const QPointer<AnswerSession> self(this);
    const auto read = QuestionChanges::read(m_page.id);
    if (read)
        show(read.value);
    if (self)
        say(read ? text : read.text(), isError || !read);
}

} // namespace KODMS::Services
