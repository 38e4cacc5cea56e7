// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <locale.h>

#include <string>

namespace KODMS::Services {

/// Lets this thread's C library read and write names as UTF-8 while the object
/// lives, or at least leave their bytes alone, whatever locale the program runs in:
/// the archive library gives no name at all for Chinese entries otherwise.
class Utf8Locale {
public:
    enum class Use { Reading, Writing };

    explicit Utf8Locale(Use use = Use::Reading);
    ~Utf8Locale();
    Utf8Locale(const Utf8Locale &) = delete;
    Utf8Locale &operator=(const Utf8Locale &) = delete;

private:
#ifdef _WIN32
    int m_scope; ///< whether a locale was one thread's or the program's
    std::string m_before;
#else
    locale_t m_locale;
    locale_t m_before;
#endif
};

} // namespace KODMS::Services
