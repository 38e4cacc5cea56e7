// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
// Works on an installation: worker INI MODE SEED SCRATCH [STEP]
//   steps    any steps until it is killed
//   once     the one step STEP, on a disk that is full when the test says so
//   writers  changes with remembered states until standard input is closed
#include "services/api/ServiceRuntime.h"
#include "tests/durability/WorkSteps.h"
#include "tests/durability/WriterLoop.h"

#include <QCoreApplication>

#include <cstdio>
#include <dlfcn.h>

using namespace KODMS::Tests;
using KODMS::Services::ServiceRuntime;

namespace {

enum Code { Done = 0, Refused = 1, Misused = 2 };

/// From here on the disk has only so much room left, when the test stands in between.
void armFullDisk()
{
    using Arm = void (*)();
    if (const auto arm = reinterpret_cast<Arm>(::dlsym(RTLD_DEFAULT, "kodms_full_disk_arm")))
        arm();
}

int work(const QStringList &arguments)
{
    const QString &mode = arguments.at(2);
    const quint32 seed = arguments.at(3).toUInt();
    WorkSteps steps(seed, arguments.at(4));
    if (mode == QLatin1String("once")) {
        armFullDisk();
        return steps.perform(arguments.at(5)) ? Done : Refused;
    }
    WorkSteps::say(QStringLiteral("ready"));
    if (mode == QLatin1String("writers")) {
        const int changes = WriterLoop(steps).run(seed);
        WorkSteps::say(QStringLiteral("changes %1").arg(changes));
        return Done;
    }
    for (;;)
        steps.performAny();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 5)
        return Misused;
    const auto started = ServiceRuntime::instance().start(arguments.at(1));
    if (!started) {
        WorkSteps::say(QStringLiteral("no ") + started.text);
        return Refused;
    }
    const int code = work(arguments);
    ServiceRuntime::instance().stop();
    return code;
}
