// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/robot/ConnectionRules.h"
#include "apps/robot/JobDesk.h"

#include <QStringList>

#include <optional>

namespace KODMS::Robot {

/// What was typed.
struct Options {
    QString configPath;
    QString login;
    QString passwordFile;
    std::optional<quint16> port; ///< none: the configuration's
    WorkManner work;
    ConnectionRules::Manner manner = ConnectionRules::Manner::Normal;
    bool isVerbose = false;
    QString text; ///< --help or --version: what to write instead of working

    /// The failure's text says what is wrong with the command line.
    static Services::Result<Options> read(const QStringList &arguments);
};

} // namespace KODMS::Robot
