// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/FileStore.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

constexpr int MaxNameLength = 200;

bool isNameCharacter(QChar c)
{
    const ushort u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '.' ||
           u == '_' || u == '-';
}

} // namespace

bool FileStore::isValidStoredName(const QString &name)
{
    return !name.isEmpty() && name.size() <= MaxNameLength && name.at(0) != QLatin1Char('.') &&
           std::all_of(name.cbegin(), name.cend(), isNameCharacter);
}

} // namespace KODMS::Services
