// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/AdminTool.h"
#include "apps/console/ProgramSetup.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kodms-admin"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KODMS_VERSION));
    const KODMS::Console::ProgramSetup setup;
    return KODMS::Admin::AdminTool().run(QCoreApplication::arguments());
}
