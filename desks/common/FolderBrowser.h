// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;

namespace KODMS::UI {

/// Shows a folder in the file browser and waits for nothing: the Explorer, asked
/// to select the folder; where there is no Explorer, the system's own browser.
void showInFileBrowser(const QString &folder);

} // namespace KODMS::UI
