// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/desk/DeskCases.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <cstdlib>
#include <exception>

using namespace KODMS::Bench;

namespace {

QVector<Measured> measureAll(const BenchInstallation &installation, int terms)
{
    QVector<Measured> all = measureBuilding(terms);
    all << measureFilling(terms * 4);
    const auto keystrokes = [&](const char *name, const char *edit, const QStringList &found) {
        std::fprintf(stderr, "%s: %d terms\n", name, found.size());
        all << measureKeystrokes(QString::fromUtf8(name), edit, found);
    };
    keystrokes("keystroke to repainted table: job name, 2 letters", "m_pJobFilterLE",
               installation.jobNameTerms(terms, 2));
    keystrokes("... job name, 3 letters", "m_pJobFilterLE", installation.jobNameTerms(terms, 3));
    keystrokes("... job name, 8 letters", "m_pJobFilterLE", installation.jobNameTerms(terms, 8));
    keystrokes("... executor, 2 Chinese characters", "m_pPrerFilterLE",
               installation.executorTerms(terms));
    installation.signIn(QStringLiteral("user"));
    keystrokes("... job name, 3 letters, ordinary user", "m_pJobFilterLE", termsOnDesk(terms, 3));
    return all;
}

/// Empty for what was not measured: another process's CPU time, a ratio to nothing.
QString figure(double value)
{
    return value > 0 ? QString::number(value, 'f', 2) : QString();
}

void printTable(const QVector<Measured> &all)
{
    std::printf("| what | goal | measured | median ms | p99 ms | CPU median ms | of it search and "
                "fill | ratio |\n"
                "|---|---|---|---|---|---|---|---|\n");
    for (const Measured &one : all)
        std::printf("| %s | %s | %d | %.2f | %.2f | %s | %s | %s |\n", qPrintable(one.name),
                    qPrintable(one.goal), static_cast<int>(one.watch.count()),
                    one.watch.wallMedian(), one.watch.wall99(),
                    qPrintable(figure(one.watch.cpuMedian())),
                    qPrintable(figure(one.search.cpuMedian())), qPrintable(figure(one.ratio)));
}

void printJson(int flows, const QVector<Measured> &all)
{
    QJsonArray rows;
    for (const Measured &one : all)
        rows << QJsonObject{{QStringLiteral("what"), one.name},
                            {QStringLiteral("goal"), one.goal},
                            {QStringLiteral("measured"), static_cast<int>(one.watch.count())},
                            {QStringLiteral("wallMedianMs"), one.watch.wallMedian()},
                            {QStringLiteral("wall99Ms"), one.watch.wall99()},
                            {QStringLiteral("cpuMedianMs"), one.watch.cpuMedian()},
                            {QStringLiteral("searchCpuMedianMs"), one.search.cpuMedian()},
                            {QStringLiteral("ratio"), one.ratio}};
    const QJsonObject figures{{QStringLiteral("flows"), flows},
                              {QStringLiteral("platform"), QGuiApplication::platformName()},
                              {QStringLiteral("rows"), rows}};
    std::printf("%s\n", QJsonDocument(figures).toJson().constData());
}

int runBench(const QCommandLineParser &options)
{
    const BenchInstallation installation(options.value(QStringLiteral("installation")),
                                         options.value(QStringLiteral("flows")).toInt());
    const int terms = std::max(1, options.value(QStringLiteral("terms")).toInt());
    QVector<Measured> all = measureAll(installation, terms);
    all << measureHostStart(options.value(QStringLiteral("host")), installation.configPath(), 20);
    if (options.isSet(QStringLiteral("json"))) {
        printJson(installation.flows(), all);
        return EXIT_SUCCESS;
    }
    std::printf("%d flows, platform %s\n\n", installation.flows(),
                qPrintable(QGuiApplication::platformName()));
    printTable(all);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QCommandLineParser options;
    options.addHelpOption();
    options.addOptions(
        {{QStringLiteral("flows"), QStringLiteral("Flows to generate."), QStringLiteral("N"),
          QStringLiteral("100000")},
         {QStringLiteral("terms"), QStringLiteral("Different terms a case."), QStringLiteral("N"),
          QStringLiteral("50")},
         {QStringLiteral("installation"),
          QStringLiteral("Measure on this sample installation; generated there when missing."),
          QStringLiteral("DIR")},
         {QStringLiteral("host"), QStringLiteral("The host whose start is measured."),
          QStringLiteral("PROGRAM"),
          QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("kodms-desk"))},
         {QStringLiteral("json"), QStringLiteral("Print figures as JSON.")}});
    options.process(app);
    try {
        return runBench(options);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return EXIT_FAILURE;
    }
}
