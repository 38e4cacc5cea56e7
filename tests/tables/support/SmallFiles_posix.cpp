// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/tables/support/SmallFiles.h"

#include <csignal>
#include <sys/resource.h>

namespace KODMS::Tests {

SmallFiles::SmallFiles(qint64 bytes)
{
    m_handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    m_before = limit.rlim_cur;
    limit.rlim_cur = static_cast<rlim_t>(bytes);
    m_isInForce = ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

SmallFiles::~SmallFiles()
{
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = m_before;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, m_handler);
}

} // namespace KODMS::Tests
