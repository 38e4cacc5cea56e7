// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/search/Stopwatch.h"
#include "services/config/Configuration.h"

namespace KODMS::Bench {

/// From a closed database to the first page of each desk, while the index is being read
/// in the background.
class FirstPage {
public:
    explicit FirstPage(const Services::DatabaseSettings &settings) : m_settings(settings) {}

    void measure(int rounds);

    const Stopwatch &watch() const { return m_watch; }

private:
    void open();
    template <typename Service, typename Row> static void show(const char *field);

    Services::DatabaseSettings m_settings;
    Stopwatch m_watch;
};

} // namespace KODMS::Bench
