// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>
#include <utility>

namespace KODMS::Tests {

/// Watches for the next menu that opens and runs its own loop, does something to
/// it, and closes it, so that no test waits for a hand that is not there. Make it
/// before the menu opens; one menu a probe.
class MenuProbe : public QObject {
public:
    using Deed = std::function<void(QMenu *)>;

    explicit MenuProbe(Deed deed = nullptr) : m_deed(std::move(deed))
    {
        QTimer::singleShot(0, this, [this] { look(); });
    }

    /// The menu that opened; null when none did, or when it is gone.
    QMenu *menu() const { return m_menu; }

    QStringList captions() const { return m_captions; }

    QPoint position() const { return m_position; }

    bool hasOpened() const { return m_hasOpened; }

private:
    void look()
    {
        m_menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!m_menu)
            return;
        m_hasOpened = true;
        m_position = m_menu->pos();
        const auto actions = m_menu->actions();
        for (const QAction *action : actions)
            m_captions << action->text();
        if (m_deed)
            m_deed(m_menu);
        if (m_menu)
            m_menu->close();
    }

    Deed m_deed;
    QPointer<QMenu> m_menu;
    QStringList m_captions;
    QPoint m_position;
    bool m_hasOpened = false;
};

/// A deed for the probe: clicks the action with this caption.
inline MenuProbe::Deed clickAction(const QString &caption)
{
    return [caption](QMenu *menu) {
        const auto actions = menu->actions();
        for (QAction *action : actions)
            if (action->text() == caption)
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    };
}

} // namespace KODMS::Tests
