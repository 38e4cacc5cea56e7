// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/scale/ScaleInstallation.h"
#include "bench/scale/WorkCases.h"
#include "services/api/ServiceRuntime.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

using namespace KODMS::Bench;

namespace {

void printTable(const WorkCases &cases, const std::vector<WorkFigure> &figures)
{
    std::printf("| work | repeated | wall ms | desk CPU ms | server CPU ms | round trips | bytes "
                "sent | bytes received |\n|---|---|---|---|---|---|---|---|\n");
    for (const WorkFigure &figure : figures)
        std::printf("| %s | %d | %.2f | %.2f | %.2f | %.1f | %.0f | %.0f |\n",
                    qPrintable(figure.name), figure.times, figure.wallMs, figure.deskMs,
                    figure.serverMs, figure.roundTrips, figure.sentBytes, figure.receivedBytes);
    constexpr double megabyte = 1e6;
    std::printf("\n| what | measured |\n|---|---|\n| connections of the desk | %d |\n"
                "| memory of one connection at the server | %.1f MB |\n"
                "| memory of the process before it starts | %.1f MB |\n"
                "| ... with the index | %.1f MB |\n| of it the index | %.1f MB |\n",
                cases.server().connections(),
                static_cast<double>(cases.server().bytesOfAConnection()) / megabyte,
                static_cast<double>(cases.bytesBefore()) / megabyte,
                static_cast<double>(cases.bytesAfter()) / megabyte, cases.indexBytes() / megabyte);
}

void printJson(const WorkCases &cases, const std::vector<WorkFigure> &figures)
{
    QJsonArray works;
    for (const WorkFigure &figure : figures)
        works << QJsonObject{{QStringLiteral("work"), figure.name},
                             {QStringLiteral("times"), figure.times},
                             {QStringLiteral("wallMs"), figure.wallMs},
                             {QStringLiteral("deskCpuMs"), figure.deskMs},
                             {QStringLiteral("serverCpuMs"), figure.serverMs},
                             {QStringLiteral("roundTrips"), figure.roundTrips},
                             {QStringLiteral("sentBytes"), figure.sentBytes},
                             {QStringLiteral("receivedBytes"), figure.receivedBytes}};
    const QJsonObject all{
        {QStringLiteral("works"), works},
        {QStringLiteral("connections"), cases.server().connections()},
        {QStringLiteral("connectionBytes"),
         static_cast<double>(cases.server().bytesOfAConnection())},
        {QStringLiteral("bytesBefore"), static_cast<double>(cases.bytesBefore())},
        {QStringLiteral("bytesWithIndex"), static_cast<double>(cases.bytesAfter())},
        {QStringLiteral("indexBytes"), cases.indexBytes()}};
    std::printf("%s\n", QJsonDocument(all).toJson().constData());
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(
        QStringLiteral("What one desk costs a database server, itself and the network between."));
    options.addHelpOption();
    options.addOptions(
        {{QStringLiteral("server"),
          QStringLiteral("What tests/postgres/server wrote when it started a server."),
          QStringLiteral("FILE")},
         {QStringLiteral("flows"), QStringLiteral("Flows to generate."), QStringLiteral("N"),
          QStringLiteral("100000")},
         {QStringLiteral("json"), QStringLiteral("Print figures as JSON.")}});
    options.process(app);
    try {
        ScaleInstallation installation(options.value(QStringLiteral("server")),
                                       options.value(QStringLiteral("flows")).toInt());
        WorkCases cases(installation);
        const std::vector<WorkFigure> figures = cases.measure();
        if (options.isSet(QStringLiteral("json")))
            printJson(cases, figures);
        else
            printTable(cases, figures);
        KODMS::Services::ServiceRuntime::instance().stop();
        return EXIT_SUCCESS;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return EXIT_FAILURE;
    }
}
