// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace KODMS::Services {

/// While it lives, what people type, click and close reaches only the window let
/// through. It is swallowed, not delayed: a click on a button that seemed dead
/// must not act afterwards.
class InputBarrier final : public QObject {
    Q_OBJECT

public:
    InputBarrier();
    ~InputBarrier() override;

    void letThrough(QWidget *window) { m_open = window; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isForOpenWindow(QObject *watched) const;

    QPointer<QWidget> m_open;
};

} // namespace KODMS::Services
