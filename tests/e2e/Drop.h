// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;
class QWidget;

namespace KODMS::Tests {

/// Drags a file or folder of this machine over the widget and lets it go there.
void dropPath(QWidget &target, const QString &path);

} // namespace KODMS::Tests
