// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Guid.h"

#include <QUuid>

#include <algorithm>

namespace KODMS::Services {

QString newGuid()
{
    return QString::fromLatin1(QUuid::createUuid().toRfc4122().toHex());
}

bool isGuid(const QString &text)
{
    constexpr int digits = 32;
    return text.size() == digits && std::all_of(text.begin(), text.end(), [](QChar c) {
               return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
                      (c >= QLatin1Char('a') && c <= QLatin1Char('f'));
           });
}

} // namespace KODMS::Services
