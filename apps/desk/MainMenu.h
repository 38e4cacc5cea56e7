// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QDockWidget;

namespace KODMS::Host {

class MainWindow;
class Preferences;

/// The menus of the main window.
struct MainMenu {
    struct Panels {
        QDockWidget *notices;
        QDockWidget *handOvers;
        QDockWidget *history;
    };

    static void build(MainWindow &window, const Panels &panels, const Preferences &preferences,
                      int userId);
};

} // namespace KODMS::Host
