// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

namespace KODMS::Host {

/// Says why the host could not start, what to do, and which files were meant.
class StartFailureWindow : public QDialog {
    Q_OBJECT

public:
    StartFailureWindow(const QString &reason, const QString &configPath);
};

} // namespace KODMS::Host
