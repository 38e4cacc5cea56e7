// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QWidget>

namespace KODMS::Tests {

/// Somebody at the import window that is open: there is one at a time.
class ImportUser {
public:
    ImportUser();

    bool isThere() const { return m_window && m_window->isVisible(); }

    bool isDeleted() const { return m_window.isNull(); }

    QWidget *window() const { return m_window; }

    QString text(const char *label) const;

    /// Drops an archive or a folder onto the place for it.
    void drop(const QString &path) const;

    /// Presses the button, which has to be ready.
    void import() const;

private:
    QPointer<QWidget> m_window;
};

} // namespace KODMS::Tests
