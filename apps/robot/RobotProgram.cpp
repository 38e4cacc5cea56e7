// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/RobotProgram.h"

#include "apps/console/Interrupt.h"
#include "apps/console/PasswordSource.h"
#include "apps/console/Terminal.h"
#include "apps/robot/QuitOnSignal.h"
#include "apps/robot/RobotLog.h"
#include "apps/robot/RobotServer.h"
#include "foundation/common/Common.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

#include <QCoreApplication>
#include <QLoggingCategory>

namespace KODMS::Robot {

using Console::Interrupt;
using Console::PasswordSource;
using Console::Terminal;
using Services::Outcome;
using Services::Result;
using Services::ServiceRuntime;
using Services::SignIn;

int RobotProgram::run(const QStringList &arguments)
{
    const Result<Options> options = Options::read(arguments);
    if (!options) {
        Terminal::writeError(QStringLiteral("kodms-robot: ") + options.text());
        Terminal::writeError(QStringLiteral("kodms-robot --help shows what there is"));
        return Usage;
    }
    if (!options.value.text.isEmpty()) {
        Terminal::writeOutput(options.value.text.toLocal8Bit());
        return Stopped;
    }
    if (!options.value.isVerbose)
        QLoggingCategory::setFilterRules(QStringLiteral("kodms.*=false"));
    Outcome outcome = ServiceRuntime::instance().start(options.value.configPath);
    if (outcome)
        outcome = signIn(options.value);
    if (outcome)
        outcome = work(options.value);
    ServiceRuntime::instance().stop();
    if (outcome || Interrupt::wasAskedFor())
        return Stopped;
    Terminal::writeError(QStringLiteral("kodms-robot: ") + outcome.text);
    return Failed;
}

Outcome RobotProgram::signIn(const Options &options)
{
    const Result<QString> password =
        PasswordSource(options.passwordFile)
            .existing(QStringLiteral("Password of %1:").arg(options.login));
    if (!password)
        return password.outcome;
    if (Outcome signedIn = SignIn::signIn(options.login, password.value); !signedIn)
        return signedIn;
    if (SignIn::current().roles.contains(QStringLiteral("robot")))
        return Outcome::success();
    return Outcome::failure(QStringLiteral("the account \"%1\" does not have the role robot; "
                                           "kodms-admin user role %1 --grant robot gives it")
                                .arg(options.login));
}

/// Where the desks send to, when that is this machine. Requests carry no password, so nobody
/// from outside may reach the stand-in.
QHostAddress RobotProgram::place()
{
    const QString configured =
        QString::fromStdString(Common::commonInterface()->getConfig().robotHost);
    const QHostAddress host(configured);
    if (host.isLoopback())
        return host;
    RobotLog::write(QStringLiteral("the configured robot, %1, is not on this machine; the desks "
                                   "will not reach this one")
                        .arg(RobotLog::quoted(configured)));
    return QHostAddress(QHostAddress::LocalHost);
}

Outcome RobotProgram::work(const Options &options)
{
    const QuitOnSignal quitter;
    if (Interrupt::wasAskedFor())
        return Outcome::success();
    JobDesk desk(options.work);
    ConnectionRules rules;
    rules.manner = options.manner;
    RobotServer server(rules, [&desk](const RobotRequest &request) { return desk.take(request); });
    const auto configured = static_cast<quint16>(Common::commonInterface()->getConfig().robotPort);
    if (Outcome listens = server.listenAt(place(), options.port.value_or(configured)); !listens)
        return listens;
    if (Outcome taken = desk.takeUp(); !taken)
        return taken;
    Terminal::writeOutput("kodms-robot listens on " + server.place().toLatin1() + '\n');
    QCoreApplication::exec();
    RobotLog::write(QStringLiteral("stopped; %1 jobs wait for the next start").arg(desk.atHand()));
    return Outcome::success();
}

} // namespace KODMS::Robot
