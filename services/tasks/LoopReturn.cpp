// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/LoopReturn.h"

#include <QEvent>

#include <utility>

namespace KODMS::Services {

/// A deferred deletion carries the level of the event loop that asked for it, which
/// no other queued event does.
LoopReturn::LoopReturn(std::function<void()> action) : m_action(std::move(action))
{
    deleteLater();
}

bool LoopReturn::event(QEvent *event)
{
    if (event->type() == QEvent::DeferredDelete)
        m_action();
    return QObject::event(event);
}

} // namespace KODMS::Services
