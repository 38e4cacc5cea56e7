// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace KODMS::Host {

/// The program's name and its arguments, before there is an application object to ask.
QStringList commandLine(int argc, char **argv);

} // namespace KODMS::Host
