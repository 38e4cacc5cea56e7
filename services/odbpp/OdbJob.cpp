// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/OdbJob.h"

#include <algorithm>

namespace KODMS::Services {

bool OdbLayer::isCopper() const
{
    static const QStringList copper{QStringLiteral("SIGNAL"), QStringLiteral("POWER_GROUND"),
                                    QStringLiteral("MIXED")};
    return context == QLatin1String("BOARD") && copper.contains(type);
}

int OdbJob::layerCount() const
{
    return static_cast<int>(std::count_if(layers.cbegin(), layers.cend(),
                                          [](const OdbLayer &layer) { return layer.isCopper(); }));
}

} // namespace KODMS::Services
