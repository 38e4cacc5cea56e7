// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/ui/questions/AnswerForm.h"
#include "services/ui/questions/QuestionSession.h"

#include <QImage>

namespace KODMS::Services {

/// Reading a question and answering it.
class AnswerSession final : public QuestionSession {
    Q_OBJECT

public:
    AnswerSession(AnswerForm &form, QWidget &window);

    /// Reads the question anew, also when it is the one that is shown.
    void retarget(int questionId) override;

private:
    void setWorking(bool isWorking) override { m_form.setWorking(isWorking); }

    void say(const QString &text, bool isError) override { m_form.say(text, isError); }

    void show(const QuestionPage &page);
    void showPictures(const QVector<QuestionPicture> &pictures);
    void addPicture(const QuestionPicture &picture, const Result<QImage> &image);
    void sayUnread(const QuestionPicture &picture, const Outcome &failed);
    void openPicture(int index);
    void submit();
    void reload(const QString &text, bool isError);

    AnswerForm &m_form;
    QuestionPage m_page;
    int m_userId = 0; ///< for whom the question was read
};

} // namespace KODMS::Services
