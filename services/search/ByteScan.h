// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/PortableScan.h"
#include "services/search/Sse2Scan.h"

namespace KODMS::Services {

#if defined(__SSE2__)
namespace ByteScan = Sse2Scan;
#else
namespace ByteScan = PortableScan;
#endif

} // namespace KODMS::Services
