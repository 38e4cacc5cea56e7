// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/BenchDatabase.h"
#include "bench/search/BenchServer.h"
#include "bench/search/FirstPage.h"
#include "bench/search/PlainView.h"
#include "bench/search/SearchCases.h"
#include "bench/search/Stopwatch.h"
#include "bench/search/WriteCost.h"
#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "foundation/bll/Odbpp_OrigFile_ViewBll.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace KODMS;
using namespace KODMS::Bench;

namespace {

struct Line {
    QString name;
    Stopwatch ours;
    Stopwatch plain;
    double found = 0;      ///< rows in all, mean over the terms
    double worstRatio = 0; ///< plain / ours of the term that gains least, CPU time

    double ratio() const { return plain.cpuMedian() / std::max(0.001, ours.cpuMedian()); }
};

template <typename Service, typename Row> std::pair<int, int> ask(List list, int pageStart)
{
    List counted = list;
    list.back().pageEnabled = 1;
    list.back().pageStart = std::to_string(pageStart);
    list.back().pageSize = "30";
    std::vector<Row> rows;
    int total = 0;
    if (!Service().selectAndCountBySearchModel(list, counted, rows, total))
        std::exit(EXIT_FAILURE);
    return {static_cast<int>(rows.size()), total};
}

std::pair<int, int> askOurs(const SearchCase &searchCase, const List &list)
{
    using namespace DataLib;
    if (searchCase.isFlowView)
        return ask<BLL::Odbpp_Flow_ViewBll, Model::Odbpp_Flow_View>(list, searchCase.pageStart);
    return ask<BLL::Odbpp_OrigFile_ViewBll, Model::Odbpp_OrigFile_View>(list, searchCase.pageStart);
}

/// Both ways have to find the same, or the comparison is worth nothing.
void compareAnswers(const SearchCase &searchCase, std::pair<int, int> ours,
                    std::pair<int, int> plain)
{
    if (ours == plain)
        return;
    std::fprintf(stderr, "%s: %d of %d rows here, %d of %d in the plain view\n",
                 qPrintable(searchCase.name), ours.first, ours.second, plain.first, plain.second);
    std::exit(EXIT_FAILURE);
}

Line measure(BenchDatabase &database, const SearchCase &searchCase, int rounds, int plainTerms)
{
    Line line;
    line.name = searchCase.name;
    database.context().setActor(searchCase.actor);
    PlainView plainView(database.context().database(), searchCase);
    std::vector<std::pair<int, int>> answers;
    askOurs(searchCase, searchCase.lists.front()); // the pages that both need are in memory
    for (int i = 0; i < rounds; ++i) {
        const List &list = searchCase.lists[static_cast<std::size_t>(i) % searchCase.lists.size()];
        if (searchCase.isAfterChange)
            database.touchFlow(1 + i * (database.flows() / rounds));
        line.ours.measure([&] { answers.push_back(askOurs(searchCase, list)); });
        line.found += answers.back().second / static_cast<double>(rounds);
    }
    const int step = std::max(1, rounds / plainTerms);
    for (int i = 0; i < rounds; i += step) {
        const List &list = searchCase.lists[static_cast<std::size_t>(i) % searchCase.lists.size()];
        std::pair<int, int> answer;
        line.plain.measure([&] { answer = plainView.run(list); });
        const auto place = static_cast<std::size_t>(i);
        compareAnswers(searchCase, answers[place], answer);
        const double ratio =
            line.plain.cpuOf(line.plain.count() - 1) / std::max(0.001, line.ours.cpuOf(place));
        line.worstRatio = i == 0 ? ratio : std::min(line.worstRatio, ratio);
    }
    return line;
}

void printTable(const std::vector<Line> &lines)
{
    std::printf("| case | rows found (mean) | ours: median / p99 wall ms | ours: CPU ms | "
                "plain view + LIKE: median / p99 wall ms | plain: CPU ms | plain / ours, CPU | of "
                "the term that gains least |\n"
                "|---|---|---|---|---|---|---|---|\n");
    for (const Line &line : lines)
        std::printf("| %s | %.0f | %.2f / %.2f | %.2f | %.1f / %.1f | %.1f | %.1f | %.1f |\n",
                    qPrintable(line.name), line.found, line.ours.wallMedian(), line.ours.wall99(),
                    line.ours.cpuMedian(), line.plain.wallMedian(), line.plain.wall99(),
                    line.plain.cpuMedian(), line.ratio(), line.worstRatio);
}

/// What the index costs beside the searches.
struct Costs {
    explicit Costs(BenchDatabase &database)
        : write(database.context().database()), start(database.settings())
    {
        constexpr int rounds = 20;
        start.measure(rounds); // first: rows that are taken back leave their traces in a server
        write.measure(rounds);
    }

    WriteCost write;
    FirstPage start;
};

void printJson(BenchDatabase &database, const std::vector<Line> &lines, const Costs *costs)
{
    QJsonArray cases;
    for (const Line &line : lines)
        cases << QJsonObject{{QStringLiteral("case"), line.name},
                             {QStringLiteral("found"), line.found},
                             {QStringLiteral("terms"), static_cast<int>(line.ours.count())},
                             {QStringLiteral("wallMedianMs"), line.ours.wallMedian()},
                             {QStringLiteral("wall99Ms"), line.ours.wall99()},
                             {QStringLiteral("cpuMedianMs"), line.ours.cpuMedian()},
                             {QStringLiteral("plainTerms"), static_cast<int>(line.plain.count())},
                             {QStringLiteral("plainWallMedianMs"), line.plain.wallMedian()},
                             {QStringLiteral("plainWall99Ms"), line.plain.wall99()},
                             {QStringLiteral("plainCpuMedianMs"), line.plain.cpuMedian()},
                             {QStringLiteral("ratioCpu"), line.ratio()},
                             {QStringLiteral("worstRatioCpu"), line.worstRatio}};
    QJsonObject all{
        {QStringLiteral("engine"),
         database.isServer() ? QStringLiteral("postgres") : QStringLiteral("sqlite")},
        {QStringLiteral("flows"), database.flows()},
        {QStringLiteral("generationSeconds"), database.generationSeconds()},
        {QStringLiteral("databaseBytes"), static_cast<double>(database.bytes())},
        {QStringLiteral("indexBytes"), static_cast<double>(database.index().status().bytes)},
        {QStringLiteral("indexMs"), database.index().status().loadMilliseconds},
        {QStringLiteral("cases"), cases}};
    if (costs != nullptr) {
        all.insert(QStringLiteral("firstPageMedianMs"), costs->start.watch().wallMedian());
        all.insert(QStringLiteral("firstPage99Ms"), costs->start.watch().wall99());
        all.insert(QStringLiteral("newFlowCpuMs"), costs->write.milliseconds());
        all.insert(QStringLiteral("newFlowWithLogToWithout"), costs->write.ratio());
    }
    std::printf("%s\n", QJsonDocument(all).toJson().constData());
}

void useIndex(BenchDatabase &database)
{
    database.index().load();
    if (database.index().status().state != Services::IndexStatus::State::Ready)
        std::exit(EXIT_FAILURE);
    database.context().setViewIndex(&database.index());
}

void printCosts(BenchDatabase &database, const Costs &costs)
{
    const Services::IndexStatus status = database.index().status();
    std::printf("\n| what | measured |\n|---|---|\n"
                "| index | %.1f MB, %.1f bytes a flow |\n"
                "| reading it in the background | %.0f ms |\n"
                "| first page of both desks from a closed database, while it is read, median / p99 "
                "| %.1f / %.1f ms |\n"
                "| a new flow with the log of changes, CPU | %.3f ms |\n"
                "| the same / without the log | %.2f |\n",
                static_cast<double>(status.bytes) / 1e6,
                static_cast<double>(status.bytes) / std::max(1, status.flows),
                status.loadMilliseconds, costs.start.watch().wallMedian(),
                costs.start.watch().wall99(), costs.write.milliseconds(), costs.write.ratio());
}

void runBench(const QCommandLineParser &options, const Services::DatabaseSettings &settings)
{
    BenchDatabase database(settings, options.value(QStringLiteral("flows")).toInt());
    const int terms = std::max(1, options.value(QStringLiteral("terms")).toInt());
    const int plainTerms = std::max(1, options.value(QStringLiteral("plain-terms")).toInt());
    const QString wanted = options.value(QStringLiteral("case"));
    std::vector<Line> lines;
    const bool hasIndex = !options.isSet(QStringLiteral("statements"));
    if (hasIndex)
        useIndex(database);
    for (const SearchCase &searchCase : searchCases(database, terms)) {
        if (!searchCase.name.contains(wanted))
            continue;
        std::fprintf(stderr, "%s\n", qPrintable(searchCase.name));
        lines.push_back(measure(database, searchCase, terms, plainTerms));
    }
    std::unique_ptr<Costs> costs;
    if (hasIndex && wanted.isEmpty())
        costs = std::make_unique<Costs>(database);
    if (options.isSet(QStringLiteral("json"))) {
        printJson(database, lines, costs.get());
        return;
    }
    std::printf("%s, %d flows, %.0f MB, generated in %.1f s, %d terms a case (plain view: %d)\n\n",
                database.isServer() ? "PostgreSQL" : "SQLite", database.flows(),
                static_cast<double>(database.bytes()) / 1e6, database.generationSeconds(), terms,
                plainTerms);
    printTable(lines);
    if (costs)
        printCosts(database, *costs);
    std::printf("\n");
    std::fflush(stdout);
}

void runOnFile(const QCommandLineParser &options)
{
    const QTemporaryDir folder;
    Services::DatabaseSettings settings;
    settings.driver = QStringLiteral("sqlite");
    settings.path = options.value(QStringLiteral("database"));
    if (settings.path.isEmpty())
        settings.path = folder.filePath(QStringLiteral("bench.db"));
    runBench(options, settings);
}

bool runOnServer(const QCommandLineParser &options)
{
    BenchServer server(options.value(QStringLiteral("server")));
    if (server.isThere())
        runBench(options, server.databaseFor(options.value(QStringLiteral("flows")).toInt()));
    else
        std::printf("PostgreSQL: not measured, there is no server: %s\n",
                    qPrintable(server.problem()));
    return server.isThere();
}

int runOn(const QString &engine, const QCommandLineParser &options)
{
    const QStringList engines{QStringLiteral("sqlite"), QStringLiteral("postgres"),
                              QStringLiteral("both")};
    if (!engines.contains(engine)) {
        std::fprintf(stderr, "no such engine: %s\n", qPrintable(engine));
        return EXIT_FAILURE;
    }
    if (engine != QLatin1String("postgres"))
        runOnFile(options);
    if (engine == QLatin1String("sqlite"))
        return EXIT_SUCCESS;
    const bool isMeasured = runOnServer(options);
    return isMeasured || engine == QLatin1String("both") ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser options;
    options.addHelpOption();
    options.addOptions(
        {{QStringLiteral("engine"),
          QStringLiteral("sqlite, postgres or both; a server is started "
                         "for it and stopped."),
          QStringLiteral("NAME"), QStringLiteral("sqlite")},
         {QStringLiteral("flows"), QStringLiteral("Flows to generate."), QStringLiteral("N"),
          QStringLiteral("100000")},
         {QStringLiteral("terms"), QStringLiteral("Different terms a case."), QStringLiteral("N"),
          QStringLiteral("50")},
         {QStringLiteral("plain-terms"), QStringLiteral("Terms for the plain view."),
          QStringLiteral("N"), QStringLiteral("10")},
         {QStringLiteral("database"),
          QStringLiteral("Measure SQLite on this file; generated there when it is missing."),
          QStringLiteral("PATH")},
         {QStringLiteral("server"),
          QStringLiteral("Keep the server and its databases in this folder (tests/postgres/server "
                         "stop PATH ends it); started there when it does not run."),
          QStringLiteral("PATH")},
         {QStringLiteral("case"), QStringLiteral("Only cases whose name contains this."),
          QStringLiteral("TEXT")},
         {QStringLiteral("statements"), QStringLiteral("Without the index.")},
         {QStringLiteral("json"), QStringLiteral("Print figures as JSON.")}});
    options.process(app);
    try {
        return runOn(options.value(QStringLiteral("engine")), options);
    } catch (const Services::SqlError &error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.logText()));
        return EXIT_FAILURE;
    }
}
