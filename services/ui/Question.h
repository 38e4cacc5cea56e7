// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;
class QWidget;

namespace KODMS::Services {

/// Asks yes or no, with no as the answer of Enter and Esc. The window may be deleted
/// while the question stands open: that is a no.
bool askYesNo(QWidget &window, const QString &title, const QString &text);

} // namespace KODMS::Services
