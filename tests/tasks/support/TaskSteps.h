// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"
#include "services/tasks/TaskDialog.h"

#include <QMessageBox>

#include <functional>

namespace KODMS::Tests {

/// Works in small pieces until the time is over or it is cancelled.
Services::Outcome workFor(Services::Progress &progress, int milliseconds);

/// A task of that length.
Services::Outcome runFor(int milliseconds);

/// The visible progress dialog, or null.
Services::TaskDialog *taskDialog();

/// The visible message box, or null.
QMessageBox *messageBox();

/// Presses the cancel button of the progress dialog, which has to be there.
void pressCancel();

void later(int milliseconds, const std::function<void()> &action);

/// Does it as a press on a button would: from the main event loop, which goes on
/// until everything that it caused is delivered.
void fromTheEventLoop(const std::function<void()> &action);

/// A box that a person answers after `milliseconds`.
void showBox(int milliseconds);

} // namespace KODMS::Tests
