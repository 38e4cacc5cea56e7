// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/StoreBehindRecords.h"

namespace KODMS::Services {

bool StoreBehindRecords::exists(const QString &storedName)
{
    return FileStore::isValidStoredName(storedName) && m_store.exists(storedName);
}

Outcome StoreBehindRecords::removeBody(const QString &storedName)
{
    return m_store.removeIfThere(storedName);
}

} // namespace KODMS::Services
