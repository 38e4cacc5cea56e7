// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QApplication;

namespace KODMS::Host {

/// The language of the host's and the services' windows. The source texts are
/// Chinese, so that Chinese needs only Qt's own texts.
struct Translations {
    /// `language` is "zh" or "en"; anything else counts as "zh".
    static void install(QApplication &app, const QString &language);
};

} // namespace KODMS::Host
