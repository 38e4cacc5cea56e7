// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <locale.h>

namespace KODMS::Services {

/// Lets this thread's C library read and write names as UTF-8 while the object
/// lives, whatever locale the program runs in: the archive library gives no name
/// at all for Chinese entries otherwise.
class Utf8Locale {
public:
    Utf8Locale();
    ~Utf8Locale();
    Utf8Locale(const Utf8Locale &) = delete;
    Utf8Locale &operator=(const Utf8Locale &) = delete;

private:
#ifndef _WIN32
    locale_t m_locale;
    locale_t m_before;
#endif
};

} // namespace KODMS::Services
