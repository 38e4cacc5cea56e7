// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/CopySide.h"

#include <QCoreApplication>

namespace KODMS::Services {

Outcome CopySide::source(const Outcome &outcome)
{
    const QString text = QCoreApplication::translate("InstallationCopy", "来源的文件库：%1");
    return outcome ? outcome : Outcome::failure(text.arg(outcome.text), outcome.cause);
}

Outcome CopySide::target(const Outcome &outcome)
{
    const QString text = QCoreApplication::translate("InstallationCopy", "目标的文件库：%1");
    return outcome ? outcome : Outcome::failure(text.arg(outcome.text), outcome.cause);
}

} // namespace KODMS::Services
