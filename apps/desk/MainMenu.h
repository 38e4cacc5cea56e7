// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QDockWidget;

namespace KODMS::Host {

class MainWindow;
class Preferences;

/// The menus of the main window.
struct MainMenu {
    static void build(MainWindow &window, QDockWidget &notices, const Preferences &preferences,
                      int userId);
};

} // namespace KODMS::Host
