// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/QuestionSession.h"

#include "services/notices/NoticeHub.h"
#include "services/ui/Question.h"

#include <QWidget>

namespace KODMS::Services {

QuestionSession::Busy::Busy(QuestionSession &session) : m_session(&session)
{
    session.m_isBusy = true;
    session.setWorking(true);
}

QuestionSession::Busy::~Busy()
{
    if (!m_session)
        return;
    m_session->m_isBusy = false;
    m_session->setWorking(false);
}

QuestionSession::QuestionSession(const char *action, QWidget &window)
    : m_action(action), m_window(window)
{
}

void QuestionSession::refuseBusy(int id)
{
    if (id == m_shownId)
        return;
    const QString text = tr("正在处理，完成前不能转到其他料号或问题");
    reportRefusal(m_action, QString::number(id), QStringLiteral("the window is busy"), text);
    say(text, true);
}

/// What the person at the screen has cancelled needs no notice.
void QuestionSession::sayFailed(const QString &record, const Outcome &failed)
{
    if (!failed.isCancelled)
        reportFailure(lcFileStore(), m_action, record,
                      failed.cause.isEmpty() ? failed.text : failed.cause, failed.text);
    say(failed.text, true);
}

bool QuestionSession::ask(const QString &text)
{
    const Busy busy(*this);
    return askYesNo(m_window, m_window.windowTitle(), text);
}

} // namespace KODMS::Services
