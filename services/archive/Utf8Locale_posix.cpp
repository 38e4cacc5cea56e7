// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/Utf8Locale.h"

#include <initializer_list>

namespace KODMS::Services {

namespace {

locale_t utf8Locale()
{
    for (const char *name : {"C.UTF-8", "en_US.UTF-8", "zh_CN.UTF-8"})
        if (locale_t made = ::newlocale(LC_CTYPE_MASK, name, static_cast<locale_t>(nullptr)))
            return made;
    return static_cast<locale_t>(nullptr);
}

} // namespace

Utf8Locale::Utf8Locale(Use) : m_locale(utf8Locale()), m_before(::uselocale(m_locale)) {}

Utf8Locale::~Utf8Locale()
{
    ::uselocale(m_before);
    if (m_locale)
        ::freelocale(m_locale);
}

} // namespace KODMS::Services
