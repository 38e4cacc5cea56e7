// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/Utf8Locale.h"

#include <clocale>

namespace KODMS::Services {

// No locale is UTF-8 here. In the one named C the library hands out bytes as they stand in the
// archive; in others it turns them from one code page into another.
Utf8Locale::Utf8Locale()
    : m_scope(::_configthreadlocale(_ENABLE_PER_THREAD_LOCALE)),
      m_before(std::setlocale(LC_CTYPE, nullptr))
{
    std::setlocale(LC_CTYPE, "C");
}

Utf8Locale::~Utf8Locale()
{
    std::setlocale(LC_CTYPE, m_before.c_str());
    ::_configthreadlocale(m_scope);
}

} // namespace KODMS::Services
