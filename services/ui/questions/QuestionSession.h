// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QObject>
#include <QPointer>

class QWidget;

namespace KODMS::Services {

/// What a question window does behind its form: one record at a time, one thing at a
/// time. The window may be deleted while something runs or asks.
class QuestionSession : public QObject {
    Q_OBJECT

public:
    /// Points the window at another record; refused while something runs, and asks before
    /// it drops what is not stored.
    virtual void retarget(int id) = 0;

    /// The record that the window is really pointed at; 0: none.
    int shownId() const { return m_shownId; }

    bool isBusy() const { return m_isBusy; }

protected:
    QuestionSession(const char *action, QWidget &window);

    /// Nothing else may begin while one lives, if the session lives so long.
    class Busy {
    public:
        explicit Busy(QuestionSession &session);
        ~Busy();
        Busy(const Busy &) = delete;
        Busy &operator=(const Busy &) = delete;

    private:
        QPointer<QuestionSession> m_session;
    };

    virtual void setWorking(bool isWorking) = 0;
    virtual void say(const QString &text, bool isError) = 0;

    /// Says that the window cannot turn to another record now.
    void refuseBusy(int id);
    /// In the log and as a notice too, for what no service has said.
    void sayFailed(const QString &record, const Outcome &failed);
    bool ask(const QString &text);

    QWidget &window() const { return m_window; }

    void setShownId(int id) { m_shownId = id; }

private:
    const char *m_action;
    QWidget &m_window;
    int m_shownId = 0;
    bool m_isBusy = false;
};

} // namespace KODMS::Services
