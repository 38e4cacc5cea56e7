// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/Utf8Locale.h"

#include <clocale>

namespace KODMS::Services {

// No locale is UTF-8 here. In the one named C the library hands out bytes as they stand in the
// archive; in others it turns them from one code page into another. What it writes as UTF-8 has to
// have a name in the code page too.
Utf8Locale::Utf8Locale(Use use)
    : m_scope(::_configthreadlocale(_ENABLE_PER_THREAD_LOCALE)),
      m_before(std::setlocale(LC_CTYPE, nullptr))
{
    std::setlocale(LC_CTYPE, use == Use::Reading ? "C" : ".936");
}

Utf8Locale::~Utf8Locale()
{
    std::setlocale(LC_CTYPE, m_before.c_str());
    ::_configthreadlocale(m_scope);
}

} // namespace KODMS::Services
