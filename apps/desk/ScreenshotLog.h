// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace KODMS::Host {

/// While it lives, the log holds what went wrong with the pictures and nothing else: not
/// what every run says, nor what a platform without a screen cannot do. One at a time.
class ScreenshotLog {
public:
    ScreenshotLog();
    ~ScreenshotLog();
    ScreenshotLog(const ScreenshotLog &) = delete;
    ScreenshotLog &operator=(const ScreenshotLog &) = delete;

    /// From now on the services are made to refuse and to fail, for a picture of it.
    void provoking(bool is);

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);

    static QtMessageHandler s_before;
};

} // namespace KODMS::Host
