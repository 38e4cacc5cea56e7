// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/host/SampleInstallation.h"

#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

namespace KODMS::Tests {

using namespace Services;

SampleInstallation::SampleInstallation()
    : m_folder(m_dir.filePath(QStringLiteral("sample"))),
      m_database(m_folder + QStringLiteral("/kodms.db"))
{
    m_database.prepareSample(m_folder);
    Outcome outcome = InstallationSetup::createSample(m_folder);
    if (outcome)
        outcome = ServiceRuntime::instance().start(configPath());
    if (outcome) {
        const auto accounts = InstallationSetup::sampleAccounts(m_folder);
        outcome = accounts.outcome;
        m_accounts = accounts.value;
    }
    m_problem = outcome.text;
}

SampleInstallation::~SampleInstallation()
{
    ServiceRuntime::instance().stop();
}

QString SampleInstallation::configPath() const
{
    return InstallationSetup::sampleConfigPath(m_folder);
}

QString SampleInstallation::databaseName() const
{
    return TestDatabase::isServer() ? place().name : QStringLiteral("kodms.db");
}

SampleAccount SampleInstallation::account(const QString &role) const
{
    const QStringList wanted = role.isEmpty() ? QStringList() : QStringList{role};
    for (const SampleAccount &one : m_accounts) {
        if (one.roles == wanted)
            return one;
    }
    return {};
}

bool SampleInstallation::signIn(const QString &role) const
{
    const SampleAccount one = account(role);
    return SignIn::signIn(one.loginName, one.password).ok;
}

} // namespace KODMS::Tests
