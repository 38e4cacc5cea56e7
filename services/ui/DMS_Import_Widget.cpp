// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_Import_Widget.h"

#include "foundation/ui/DMS_UICommon.h"
#include "services/session/SessionSignals.h"
#include "services/ui/imports/ImportForm.h"
#include "services/ui/imports/ImportSession.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QPointer>
#include <QShortcut>
#include <QVBoxLayout>

using namespace KODMS::Services;

namespace KODMS::UI {

namespace {

constexpr int RobotMode = 1;

ImportKind kindOf(int mode)
{
    return mode == RobotMode ? ImportKind::RobotResult : ImportKind::PreparedJob;
}

/// The desks reload once whatever answered the window's own signal is done: a reload
/// in between would change the rows that the answer works on.
void refreshLater()
{
    auto *hub = DMS_UICommon::interface();
    QMetaObject::invokeMethod(hub, &DMS_UICommon::emitGobalSingal, Qt::QueuedConnection);
}

} // namespace

class DMS_Import_Widget::Private : public QObject {
public:
    Private(DMS_Import_Widget &window, int mode)
        : m_window(window), m_isRobot(mode == RobotMode),
          m_form(new ImportForm(kindOf(mode), &window)), session(kindOf(mode), *m_form, window)
    {
        auto *column = new QVBoxLayout(&window);
        column->setContentsMargins(0, 0, 0, 0);
        column->addWidget(m_form);
        window.setFocusProxy(m_form);
        window.installEventFilter(this);
        connect(m_form, &ImportForm::closeRequested, &window, &QWidget::close);
        connect(&session, &ImportSession::imported, this, &Private::tell);
        connect(new QShortcut(QKeySequence::Cancel, &window), &QShortcut::activated, &window,
                &QWidget::close);
        // Nothing may be stored as the next user.
        connect(&SessionSignals::instance(), &SessionSignals::actorChanged, this, [this] {
            m_window.hide();
            m_window.deleteLater();
        });
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched != &m_window || event->type() != QEvent::Close || !session.isBusy())
            return QObject::eventFilter(watched, event);
        event->ignore();
        return true;
    }

private:
    /// Whoever answers may delete the window.
    void tell(bool isWebJob)
    {
        const QPointer<DMS_Import_Widget> window(&m_window);
        const bool isRobot = m_isRobot;
        if (isRobot)
            Q_EMIT window->robotImportComplete();
        if (isWebJob && window)
            Q_EMIT window->webJobHaveSent();
        refreshLater();
    }

    DMS_Import_Widget &m_window;
    bool m_isRobot;
    ImportForm *m_form;

public:
    ImportSession session;
};

DMS_Import_Widget::DMS_Import_Widget(QWidget *parent) : DMS_Import_Widget(0, parent) {}

DMS_Import_Widget::DMS_Import_Widget(int mode, QWidget *parent) : QWidget(parent, Qt::Window)
{
    setWindowTitle(
        mode == RobotMode
            ? QCoreApplication::translate("KODMS::Services::ImportForm", "导入机器人结果")
            : QCoreApplication::translate("KODMS::Services::ImportForm", "导入料号"));
    d = std::make_unique<Private>(*this, mode);
}

DMS_Import_Widget::~DMS_Import_Widget() = default;

/// A window that is open somewhere behind comes to the front: it belongs to no other
/// window, and whoever sends it a job wants to see it.
void DMS_Import_Widget::setFlowGuid(const Import_Info &info)
{
    if (isVisible()) {
        setWindowState(windowState() & ~Qt::WindowMinimized);
        raise();
        activateWindow();
    }
    d->session.setTarget(info);
}

} // namespace KODMS::UI
