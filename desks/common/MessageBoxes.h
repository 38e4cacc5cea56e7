// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMessageBox>

namespace KODMS::UI {

// The boxes in which a desk speaks. Each waits in an event loop of its own, in
// which the table may be filled anew and the desk may be deleted: afterwards, ask
// a QPointer to the desk before touching it. A box goes with its desk;
// a desk that is gone (null) says and asks nothing.

/// Says something; one OK button.
void inform(QWidget *desk, const char *text);
void inform(QWidget *desk, const QString &text);

/// The same under a title of its own.
void inform(QWidget *desk, const QString &title, const QString &text);

/// Asks something with these buttons, none of which is the default. False unless
/// the answer is Yes; false also when the desk is gone by then.
bool confirm(QWidget *desk, const char *text, QMessageBox::StandardButtons buttons);
bool confirm(QWidget *desk, const QString &text, QMessageBox::StandardButtons buttons);

} // namespace KODMS::UI
