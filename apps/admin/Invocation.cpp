// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/Invocation.h"

namespace KODMS::Admin {

Services::Result<qint64> Invocation::number(const QString &option, qint64 least, qint64 most) const
{
    bool valid = false;
    const qint64 number = value(option).toLongLong(&valid);
    if (!valid || number < least || number > most) {
        return Services::Outcome::failure(
            QStringLiteral("--%1 \"%2\": a whole number from %3 to %4 is needed")
                .arg(option, value(option))
                .arg(least)
                .arg(most));
    }
    return number;
}

} // namespace KODMS::Admin
