// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/transfer/GridFsCases.h"
#include "bench/transfer/MongoServer.h"
#include "bench/transfer/TransferCases.h"
#include "bench/transfer/WarmMemory.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <unistd.h>

using namespace KODMS::Bench;

namespace {

struct Line {
    TransferCase work;
    std::vector<RunTime> ours;
    std::vector<RunTime> theirs;
};

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

double medianOf(const std::vector<RunTime> &times, double RunTime::*part)
{
    std::vector<double> values;
    for (const RunTime &time : times)
        values.push_back(time.*part);
    return median(values);
}

/// Of the pairs, since what else the machine does changes from pair to pair.
double ratioOf(const Line &line, double RunTime::*part)
{
    std::vector<double> ratios;
    for (std::size_t i = 0; i < line.ours.size(); ++i)
        ratios.push_back(line.ours[i].*part / line.theirs[i].*part);
    return median(ratios);
}

/// One run in an empty folder.
RunTime runIn(const QDir &place, const QString &name, const TransferCase &work,
              const std::function<void(const QString &)> &run)
{
    QDir folder(place.filePath(name));
    folder.mkpath(QStringLiteral("."));
    const RunTime time = timed([&] { run(folder.path()); }, work.serverCpu);
    if (!work.hasManyFiles)
        folder.removeRecursively();
    return time;
}

Line measure(const TransferCase &work, const QDir &place, const WarmMemory &memory, int rounds)
{
    Line line{work, {}, {}};
    const QStringList sources = work.prepare();
    const QString command = work.theirs();
    const auto run = [&](const char *who, std::vector<RunTime> &times,
                         const std::function<void(const QString &)> &action) {
        const QString name = QStringLiteral("%1-%2-%3")
                                 .arg(qHash(work.name))
                                 .arg(times.size())
                                 .arg(QString::fromLatin1(who));
        ::sync();
        memory.prepare(sources);
        times.push_back(runIn(place, name, work, action));
    };
    const auto us = [&] { run("ours", line.ours, work.ours); };
    const auto them = [&] {
        run("theirs", line.theirs, [&](const QString &folder) { shell(folder, command); });
    };
    for (int round = 0; round < rounds; ++round) {
        if (round % 2 == 0)
            us();
        them();
        if (round % 2 != 0)
            us();
        const RunTime &ours = line.ours.back();
        const RunTime &theirs = line.theirs.back();
        std::fprintf(stderr, "  ours %.0f ms, theirs %.0f ms", ours.wall, theirs.wall);
        if (theirs.serverCpu > 0)
            std::fprintf(stderr, "; the server's CPU: %.0f ms, %.0f ms", ours.serverCpu,
                         theirs.serverCpu);
        std::fprintf(stderr, "\n");
    }
    return line;
}

void printTable(const std::vector<Line> &lines)
{
    std::printf("| work | goal: ours / theirs | ours / theirs, wall | ours: wall ms | theirs: wall "
                "ms | ours / theirs, CPU | ours: CPU ms | theirs: CPU ms |\n"
                "|---|---|---|---|---|---|---|---|\n");
    for (const Line &line : lines)
        std::printf("| %s | <= %.1f | %.2f | %.0f | %.0f | %.2f | %.0f | %.0f |\n",
                    qPrintable(line.work.name), line.work.goal, ratioOf(line, &RunTime::wall),
                    medianOf(line.ours, &RunTime::wall), medianOf(line.theirs, &RunTime::wall),
                    ratioOf(line, &RunTime::cpu), medianOf(line.ours, &RunTime::cpu),
                    medianOf(line.theirs, &RunTime::cpu));
}

void printJson(const std::vector<Line> &lines, int rounds)
{
    QJsonArray cases;
    for (const Line &line : lines)
        cases << QJsonObject{
            {QStringLiteral("work"), line.work.name},
            {QStringLiteral("goal"), line.work.goal},
            {QStringLiteral("ratioWall"), ratioOf(line, &RunTime::wall)},
            {QStringLiteral("oursWallMs"), medianOf(line.ours, &RunTime::wall)},
            {QStringLiteral("theirsWallMs"), medianOf(line.theirs, &RunTime::wall)},
            {QStringLiteral("ratioCpu"), ratioOf(line, &RunTime::cpu)},
            {QStringLiteral("oursCpuMs"), medianOf(line.ours, &RunTime::cpu)},
            {QStringLiteral("theirsCpuMs"), medianOf(line.theirs, &RunTime::cpu)},
            {QStringLiteral("oursServerCpuMs"), medianOf(line.ours, &RunTime::serverCpu)},
            {QStringLiteral("theirsServerCpuMs"), medianOf(line.theirs, &RunTime::serverCpu)},
            {QStringLiteral("theirs"), line.work.theirs()}};
    const QJsonObject all{{QStringLiteral("rounds"), rounds},
                          {QStringLiteral("peakMemoryKiB"), static_cast<double>(peakMemory())},
                          {QStringLiteral("cases"), cases}};
    std::printf("%s\n", QJsonDocument(all).toJson().constData());
}

std::vector<TransferCase> allCases(const Material &material, const QDir &place,
                                   const MongoServer &server)
{
    auto cases = transferCases(material, place.filePath(QStringLiteral("store")));
    if (server.uri().isEmpty() || !hasPyMongo()) {
        std::fprintf(stderr, "without GridFS: %s\n",
                     server.uri().isEmpty() ? qPrintable(server.reason()) : "no python3-gridfs");
        return cases;
    }
    const auto more = gridFsCases(material, server);
    cases.insert(cases.end(), more.begin(), more.end());
    return cases;
}

int runBench(const QCommandLineParser &options)
{
    const auto number = [&](const char *name) {
        return std::max(1, options.value(QString::fromLatin1(name)).toInt());
    };
    const QString base = options.value(QStringLiteral("folder"));
    const QTemporaryDir work((base.isEmpty() ? QDir::tempPath() : QDir(base).absolutePath()) +
                             QStringLiteral("/kodms-bench-XXXXXX"));
    if (!work.isValid())
        throw std::runtime_error("no folder to work in");
    const QDir place(work.path());
    const Material material(
        base.isEmpty() ? place.filePath(QStringLiteral("material")) : base,
        {number("big-mib"), number("huge-mib"), number("files"), number("server-mib")});
    const WarmMemory memory(place.filePath(QStringLiteral("holes")));
    std::vector<Line> lines;
    const MongoServer server(place.filePath(QStringLiteral("mongo")));
    for (const TransferCase &one : allCases(material, place, server)) {
        if (!one.name.contains(options.value(QStringLiteral("case"))))
            continue;
        std::fprintf(stderr, "%s\n", qPrintable(one.name));
        lines.push_back(measure(one, place, memory, number("rounds")));
    }
    if (options.isSet(QStringLiteral("json"))) {
        printJson(lines, number("rounds"));
        return EXIT_SUCCESS;
    }
    std::printf("%d rounds, peak memory of this program %ld MiB\n\n", number("rounds"),
                peakMemory() / 1024);
    printTable(lines);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser options;
    options.addHelpOption();
    const auto option = [&](const char *name, const char *text, const char *value,
                            const char *standard) {
        options.addOption({QString::fromLatin1(name), QString::fromLatin1(text),
                           QString::fromLatin1(value), QString::fromLatin1(standard)});
    };
    option("folder", "Work here, and keep the material for the next time.", "PATH", "");
    option("rounds", "Runs of each, in turns.", "N", "5");
    option("big-mib", "Size of the one large text file.", "MiB", "1024");
    option("huge-mib", "Size of the file that is put and fetched as it is.", "MiB", "4096");
    option("server-mib", "Size of the file that goes to a server.", "MiB", "1024");
    option("files", "Number of small files.", "N", "20000");
    option("case", "Only cases whose name contains this.", "TEXT", "");
    options.addOption({QStringLiteral("json"), QStringLiteral("Print figures as JSON.")});
    options.process(app);
    try {
        return runBench(options);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return EXIT_FAILURE;
    }
}
