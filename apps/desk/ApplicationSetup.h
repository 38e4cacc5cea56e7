// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QApplication;

namespace KODMS::Host {

struct Options;

/// What the application object needs around its making.
struct ApplicationSetup {
    /// High-DPI behaviour, and the platform of a run without a screen. Must stand
    /// before QApplication.
    static void before(const Options &options);

    /// Makes the local encoding one that knows Chinese.
    static void writeChinese();

    /// Asks X11's platform for no OpenGL, unless the user's environment says otherwise.
    static void paintWithoutOpenGl();

    /// Names, look and language.
    static void after(QApplication &app, const QString &language);
};

} // namespace KODMS::Host
