// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/desk/BenchInstallation.h"

#include "bench/support/MustSucceed.h"
#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "services/api/InstallationSetup.h"
#include "services/api/SampleData.h"
#include "services/api/SearchIndex.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <cstdio>
#include <random>
#include <stdexcept>

namespace KODMS::Bench {

using namespace Services;

namespace {

/// What a desk meets all day but for its first seconds.
void mustBeReady(const SearchIndexState &index)
{
    if (!index.isReady)
        throw std::runtime_error("the search index was not loaded");
}

struct FlowPage {
    std::vector<DataLib::Model::Odbpp_Flow_View> rows;
    int total = 0;
};

FlowPage pageFrom(int start)
{
    DataLib::Model::DB_Search condition;
    condition.fieldName = "KoJobName";
    condition.fuzzy = 1;
    std::vector<DataLib::Model::DB_Search> counted{condition};
    condition.pageEnabled = 1;
    condition.pageStart = std::to_string(start);
    condition.pageSize = "30";
    std::vector<DataLib::Model::DB_Search> list{condition};
    FlowPage page;
    if (!DataLib::BLL::Odbpp_Flow_ViewBll().selectAndCountBySearchModel(list, counted, page.rows,
                                                                        page.total))
        throw std::runtime_error("the flow view cannot be searched");
    return page;
}

/// Collects terms from flows all over the installation until there are enough.
template <typename TermOf> QStringList termsOf(int flows, int count, TermOf termOf)
{
    std::mt19937 random(1);
    std::uniform_int_distribution<int> anywhere(0, std::max(0, flows - 30));
    QStringList terms;
    for (int page = 0; terms.size() < count && page < 20 * count; ++page) {
        const FlowPage found = pageFrom(anywhere(random));
        for (std::size_t row = 0; row < found.rows.size() && terms.size() < count; row += 7) {
            const QString term = termOf(found.rows[row], random);
            if (!term.isEmpty() && !terms.contains(term))
                terms << term;
        }
    }
    return terms;
}

} // namespace

BenchInstallation::BenchInstallation(const QString &folder, int flows)
    : m_folder(folder.isEmpty() ? m_dir.filePath(QStringLiteral("sample")) : folder)
{
    const bool isThere = QFileInfo::exists(configPath());
    if (!isThere)
        mustSucceed(InstallationSetup::createSample(m_folder));
    mustSucceed(ServiceRuntime::instance().start(configPath()));
    if (!isThere)
        generate(flows);
    mustBeReady(SearchIndex::load());
    signIn(QStringLiteral("admin"));
    m_flows = pageFrom(0).total;
}

BenchInstallation::~BenchInstallation()
{
    ServiceRuntime::instance().stop();
}

void BenchInstallation::generate(int flows) const
{
    std::fprintf(stderr, "generating %d flows ...\n", flows);
    QElapsedTimer timer;
    timer.start();
    NoProgress progress;
    SampleRequest request;
    request.flows = flows;
    SignIn::actAsOperator();
    mustSucceed(SampleData::generate(request, progress));
    std::fprintf(stderr, "... in %.1f s\n", static_cast<double>(timer.elapsed()) / 1000);
}

void BenchInstallation::signIn(const QString &loginName) const
{
    const auto accounts = InstallationSetup::sampleAccounts(m_folder);
    mustSucceed(accounts.outcome);
    for (const SampleAccount &account : accounts.value) {
        if (account.loginName == loginName) {
            mustSucceed(SignIn::signIn(loginName, account.password));
            return;
        }
    }
    mustSucceed(Outcome::failure(QStringLiteral("no account ") + loginName));
}

QString BenchInstallation::configPath() const
{
    return InstallationSetup::sampleConfigPath(m_folder);
}

QStringList BenchInstallation::jobNameTerms(int count, int length) const
{
    return termsOf(m_flows, count, [length](const auto &flow, std::mt19937 &random) {
        const QString name = QString::fromStdString(flow.jobName);
        const int last = std::max(0, name.size() - length);
        return name.mid(std::uniform_int_distribution<int>(0, last)(random), length);
    });
}

QStringList BenchInstallation::executorTerms(int count) const
{
    return termsOf(m_flows, count, [](const auto &flow, std::mt19937 &) {
        return QString::fromStdString(flow.preUserRealName).left(2);
    });
}

} // namespace KODMS::Bench
