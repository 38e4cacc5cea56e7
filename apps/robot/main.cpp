// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/console/ProgramSetup.h"
#include "apps/robot/RobotProgram.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kodms-robot"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KODMS_VERSION));
    const KODMS::Console::ProgramSetup setup;
    return KODMS::Robot::RobotProgram::run(QCoreApplication::arguments());
}
