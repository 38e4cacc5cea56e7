// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/scale/WorkCases.h"

#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "services/api/LiveChanges.h"
#include "services/api/SearchIndex.h"
#include "services/api/SignIn.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <stdexcept>

namespace KODMS::Bench {

using namespace DataLib;
using Services::LiveChanges;
using Services::SearchIndex;
using Services::SignIn;

namespace {

constexpr int searches = 500;
constexpr int remarks = 100;
constexpr int idleMs = 10000;

std::vector<Model::Odbpp_Flow_View> pageOf(const std::string &term, int start)
{
    Model::DB_Search condition;
    condition.fieldName = "KoJobName";
    condition.value = term;
    condition.fuzzy = 1;
    condition.sortEnabled = 1;
    condition.sortField = "Flow_CreateTime";
    condition.sortDirection = 1;
    std::vector<Model::DB_Search> counted{condition};
    condition.pageEnabled = 1;
    condition.pageStart = std::to_string(start);
    condition.pageSize = "30";
    std::vector<Model::DB_Search> list{condition};
    std::vector<Model::Odbpp_Flow_View> rows;
    int total = 0;
    if (!BLL::Odbpp_Flow_ViewBll().selectAndCountBySearchModel(list, counted, rows, total))
        throw std::runtime_error("the flow view cannot be searched");
    return rows;
}

} // namespace

WorkCases::WorkCases(ScaleInstallation &installation)
    : m_installation(installation), m_relay(installation.host(), installation.port()),
      m_load(installation.serverPid())
{
}

WorkFigure WorkCases::of(const char *name, int times, const std::function<void(int)> &work,
                         const std::function<void()> &others)
{
    WorkFigure sum;
    sum.name = QString::fromLatin1(name);
    sum.times = times;
    for (int i = 0; i < times; ++i) {
        if (others)
            others();
        add(sum, [&work, i] { work(i); });
    }
    const double count = times;
    for (double *figure : {&sum.wallMs, &sum.deskMs, &sum.serverMs, &sum.roundTrips, &sum.sentBytes,
                           &sum.receivedBytes})
        *figure /= count;
    return sum;
}

void WorkCases::add(WorkFigure &sum, const std::function<void()> &work)
{
    const Traffic traffic = m_relay.traffic();
    const double server = m_load.processorMs();
    const double desk = threadProcessorMs();
    QElapsedTimer wall;
    wall.start();
    work();
    sum.wallMs += static_cast<double>(wall.nsecsElapsed()) / 1e6;
    sum.deskMs += threadProcessorMs() - desk;
    sum.serverMs += m_load.processorMs() - server;
    const Traffic after = m_relay.traffic();
    sum.roundTrips += static_cast<double>(after.roundTrips - traffic.roundTrips);
    sum.sentBytes += static_cast<double>(after.sent - traffic.sent);
    sum.receivedBytes += static_cast<double>(after.received - traffic.received);
}

void WorkCases::collectFlows()
{
    constexpr int termLength = 4;
    for (int page = 0; page * 30 < searches; ++page) {
        for (const auto &flow : pageOf({}, page * 30)) {
            m_guids.push_back(flow.flowGuid);
            m_terms.push_back(flow.jobName.substr(m_terms.size() % 5, termLength));
        }
    }
    if (m_terms.empty())
        throw std::runtime_error("there is no flow");
}

void WorkCases::search(int number)
{
    pageOf(m_terms[static_cast<std::size_t>(number) % m_terms.size()], 0);
}

void WorkCases::remark(int number)
{
    const auto place = static_cast<std::size_t>(number) % m_guids.size();
    if (!BLL::Odbpp_JobFlowBll().UpdateTips(SignIn::current().id, "scale", m_guids[place]))
        throw std::runtime_error("a remark cannot be written");
}

WorkFigure WorkCases::followOthers()
{
    m_installation.changeByOthers(remarks);
    return of("a search after 100 changes by others", 1, [this](int) { search(0); });
}

/// To be watched again is to look.
WorkFigure WorkCases::lookForOthers()
{
    return of(
        "a look for others' changes after one", remarks,
        [](int) {
            LiveChanges::instance().setWatched(false);
            LiveChanges::instance().setWatched(true);
        },
        [this] { m_installation.changeByOthers(1); });
}

void WorkCases::wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

std::vector<WorkFigure> WorkCases::measure()
{
    std::vector<WorkFigure> figures;
    m_bytesBefore = ownBytes();
    figures.push_back(of("starting, signing in, first page", 1, [this](int) {
        m_installation.start(m_relay.port());
        pageOf({}, 0);
    }));
    figures.push_back(of("reading the index", 1, [this](int) {
        m_indexBytes = static_cast<double>(SearchIndex::load().bytes);
    }));
    collectFlows();
    LiveChanges::instance().begin(); // as the host does: from here on own writes are told apart
    search(0);
    m_bytesAfter = ownBytes();
    figures.push_back(of("a search", searches, [this](int i) { search(i); }));
    figures.push_back(of("a remark", remarks, [this](int i) { remark(i); }));
    figures.push_back(of("a search after a remark of one's own", remarks, [this](int i) {
        remark(i);
        search(i);
    }));
    figures.push_back(followOthers());
    figures.push_back(lookForOthers());
    m_installation.endOthers(); // their connection is none of the desk's
    figures.push_back(
        of("ten seconds of watching for others' changes", 1, [](int) { wait(idleMs); }));
    return figures;
}

} // namespace KODMS::Bench
