// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/DesksExport.h"
#include "foundation/common/ServicesExport.h"

#if !defined(_MSC_VER) || defined(__GNUC__)
#error "compiled for another system"
#endif
static_assert(sizeof(long) == 4 && sizeof(void *) == 8 && sizeof(wchar_t) == 2);
static_assert(__cplusplus >= 201703L);
static_assert(sizeof("页") == 4 && u"页"[0] == 0x9875); // read as UTF-8, and kept so
#if !defined(NOMINMAX) || !defined(WIN32_LEAN_AND_MEAN)
#error "the macros of <windows.h> are not kept away"
#endif

struct KODMS_DESKS_API Desk {
    int rows();
};

struct KODMS_SERVICES_API Service {
    int calls();
};

#if defined(KODMS_DESKS_BUILD)
int Desk::rows()
{
    return 1;
}
#endif

#if defined(KODMS_SERVICES_BUILD) || defined(KODMS_SERVICES_STATIC)
int Service::calls()
{
    return 2;
}
#else
int both(Desk &desk, Service &service)
{
    return desk.rows() + service.calls();
}
#endif
