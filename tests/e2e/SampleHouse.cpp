// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/SampleHouse.h"

#include "services/api/SampleData.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

#include <QtGlobal>

namespace KODMS::Tests {

using namespace Services;

namespace {

constexpr quint32 Seed = 7;

void require(const Outcome &outcome)
{
    if (!outcome.ok)
        qFatal("%s", qPrintable(outcome.text));
}

} // namespace

SampleHouse::SampleHouse(int flows)
{
    const QString folder = m_dir.filePath(QStringLiteral("sample"));
    require(InstallationSetup::createSample(folder));
    const auto accounts = InstallationSetup::sampleAccounts(folder);
    require(accounts.outcome);
    m_accounts = accounts.value;
    const QString config = InstallationSetup::sampleConfigPath(folder);
    require(ServiceRuntime::instance().start(config));
    NoProgress progress;
    SampleRequest request;
    request.flows = flows;
    request.seed = Seed;
    SignIn::actAsOperator();
    require(SampleData::generate(request, progress));
    SignIn::signOut();
    m_records = std::make_unique<RecordProbe>(config);
}

SampleHouse::~SampleHouse()
{
    m_records.reset();
    ServiceRuntime::instance().stop();
}

int SampleHouse::signIn(const QString &login) const
{
    if (SignIn::current().loginName != login) {
        for (const SampleAccount &account : m_accounts)
            if (account.loginName == login)
                require(SignIn::signIn(login, account.password));
    }
    if (SignIn::current().loginName != login)
        qFatal("the sample has no account %s", qPrintable(login));
    return SignIn::current().id;
}

} // namespace KODMS::Tests
