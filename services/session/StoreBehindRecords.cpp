// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/StoreBehindRecords.h"

namespace KODMS::Services {

Result<bool> StoreBehindRecords::has(const QString &storedName)
{
    return m_store.has(storedName);
}

Outcome StoreBehindRecords::removeBody(const QString &storedName)
{
    return m_store.removeIfThere(storedName);
}

} // namespace KODMS::Services
