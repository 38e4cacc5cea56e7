// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <functional>

namespace KODMS::Services {

/// Does something once control is back at the event loop in which it was made, and
/// not before: the loops of boxes and dialogs that run inside that loop's handler do
/// not count. Made where no event loop runs yet, it acts in the next one. Deletes
/// itself.
class LoopReturn final : public QObject {
    Q_OBJECT

public:
    explicit LoopReturn(std::function<void()> action);

    bool event(QEvent *event) override;

private:
    std::function<void()> m_action;
};

} // namespace KODMS::Services
