// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <csignal>
#include <sys/resource.h>

namespace KODMS::Tests {

/// While it lives, no file of this process grows beyond so many bytes: writing fails
/// then, as on a full disk, however it is done.
class SmallFiles {
public:
    explicit SmallFiles(rlim_t bytes)
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~SmallFiles()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

    SmallFiles(const SmallFiles &) = delete;
    SmallFiles &operator=(const SmallFiles &) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int) = SIG_DFL;
};

} // namespace KODMS::Tests
