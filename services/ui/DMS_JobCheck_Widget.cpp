// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_JobCheck_Widget.h"

#include "services/session/SessionSignals.h"
#include "services/ui/questions/AnswerSession.h"
#include "services/ui/questions/QuestionStyle.h"
#include "services/ui/questions/RaiseSession.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QPointer>
#include <QShortcut>
#include <QVBoxLayout>

using namespace KODMS::Services;

namespace KODMS::UI {

namespace {

constexpr QSize FirstSize{640, 600};

QString titleText(bool viewMode)
{
    return viewMode ? QCoreApplication::translate("QuestionWindow", "查看问题")
                    : QCoreApplication::translate("QuestionWindow", "创建问题");
}

} // namespace

class DMS_JobCheck_Widget::Private : public QObject {
public:
    Private(DMS_JobCheck_Widget &window, bool viewMode) : isView(viewMode), m_window(window)
    {
        auto *column = new QVBoxLayout(&window);
        column->setContentsMargins(0, 0, 0, 0);
        QWidget *form = viewMode ? makeAnswer() : makeRaise();
        column->addWidget(form);
        window.setFocusProxy(form);
        connect(new QShortcut(QKeySequence::Cancel, &window), &QShortcut::activated, &window,
                &QWidget::close);
        // Nothing may be stored as the next user.
        connect(&SessionSignals::instance(), &SessionSignals::actorChanged, this, [this] {
            m_window.hide();
            m_window.deleteLater();
        });
    }

    /// False when the window is gone.
    bool turnTo(int id)
    {
        const QPointer<DMS_JobCheck_Widget> there(&m_window);
        session->retarget(id);
        if (!there)
            return false;
        m_window.m_id = session->shownId();
        return true;
    }

    const bool isView;
    QuestionSession *session = nullptr; ///< owned

private:
    QWidget *makeRaise()
    {
        auto *form = new RaiseForm(&m_window);
        session = new RaiseSession(*form, m_window);
        connect(form, &RaiseForm::closeRequested, &m_window, &QWidget::close);
        session->setParent(this);
        return form;
    }

    QWidget *makeAnswer()
    {
        auto *form = new AnswerForm(&m_window);
        session = new AnswerSession(*form, m_window);
        connect(form, &AnswerForm::closeRequested, &m_window, &QWidget::close);
        session->setParent(this);
        return form;
    }

    DMS_JobCheck_Widget &m_window;
};

DMS_JobCheck_Widget::DMS_JobCheck_Widget(int id, bool viewMode, QWidget *parent)
    : QWidget(parent, Qt::Window), m_id(id)
{
    setWindowTitle(titleText(viewMode));
    setStyleSheet(QuestionStyle);
    setAttribute(Qt::WA_StyledBackground);
    resize(FirstSize);
    d = std::make_unique<Private>(*this, viewMode);
}

DMS_JobCheck_Widget::~DMS_JobCheck_Widget() = default;

void DMS_JobCheck_Widget::getQuestionData()
{
    d->turnTo(m_id);
}

void DMS_JobCheck_Widget::setVisible(bool visible)
{
    const bool wasVisible = isVisible();
    QWidget::setVisible(visible);
    if (!visible)
        return;
    if (!d->isView && !d->turnTo(m_id))
        return;
    if (!wasVisible)
        return;
    raise();
    activateWindow();
}

void DMS_JobCheck_Widget::closeEvent(QCloseEvent *event)
{
    event->setAccepted(!d->session->isBusy());
}

} // namespace KODMS::UI
