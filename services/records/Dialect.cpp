// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Dialect.h"

#include "services/config/Configuration.h"
#include "services/records/PostgresDialect.h"
#include "services/records/SqliteDialect.h"

namespace KODMS::Services {

std::unique_ptr<Dialect> Dialect::create(const DatabaseSettings &settings)
{
    if (settings.driver == QLatin1String("sqlite"))
        return std::make_unique<SqliteDialect>();
    if (settings.driver == QLatin1String("postgres"))
        return std::make_unique<PostgresDialect>();
    throw SqlError(SqlError::Kind::Lost, {},
                   QStringLiteral("no support for the database driver ") + settings.driver);
}

} // namespace KODMS::Services
