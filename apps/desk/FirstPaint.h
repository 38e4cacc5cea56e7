// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace KODMS::Host {

/// Calls once, after a window has been painted for the first time.
class FirstPaint : public QObject {
    Q_OBJECT

public:
    static void after(QWidget &window, std::function<void()> action);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    FirstPaint(QWidget &window, std::function<void()> action);

    std::function<void()> m_action;
};

} // namespace KODMS::Host
