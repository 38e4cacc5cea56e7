// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::Host {

struct Options;

/// The host from the making of the application object to its exit code: 0, or 1
/// when the installation cannot be used.
struct HostApplication {
    static int run(const Options &options, int &argc, char **argv);
};

} // namespace KODMS::Host
