// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/SampleHouse.h"

#include "foundation/common/Common.h"
#include "services/api/SampleData.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

#include <QFile>
#include <QRegularExpression>

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
    : m_folder(m_dir.filePath(QStringLiteral("sample"))),
      m_database(m_folder + QStringLiteral("/kodms.db"))
{
    m_database.prepareSample(m_folder);
    require(InstallationSetup::createSample(m_folder));
    const auto accounts = InstallationSetup::sampleAccounts(m_folder);
    require(accounts.outcome);
    m_accounts = accounts.value;
    m_config = InstallationSetup::sampleConfigPath(m_folder);
    require(ServiceRuntime::instance().start(m_config));
    NoProgress progress;
    SampleRequest request;
    request.flows = flows;
    request.seed = Seed;
    SignIn::actAsOperator();
    require(SampleData::generate(request, progress));
    SignIn::signOut();
    m_records = std::make_unique<RecordProbe>(m_database.settings());
}

SampleHouse::~SampleHouse()
{
    m_records.reset();
    ServiceRuntime::instance().stop();
}

int SampleHouse::signIn(const QString &login) const
{
    if (SignIn::current().loginName != login)
        require(SignIn::signIn(login, password(login)));
    return SignIn::current().id;
}

QString SampleHouse::password(const QString &login) const
{
    for (const SampleAccount &account : m_accounts)
        if (account.loginName == login)
            return account.password;
    qFatal("the sample has no account %s", qPrintable(login));
}

void SampleHouse::addAccount(const NewUser &user)
{
    SignIn::actAsOperator();
    require(UserAdmin::add(user).outcome);
    m_accounts.append({user.loginName, user.password, user.realName, user.roles});
}

QString SampleHouse::downloadFolder() const
{
    return QString::fromStdString(Common::commonInterface()->getConfig().downloadDir);
}

void SampleHouse::moveRobotTo(quint16 port) const
{
    ServiceRuntime::instance().stop();
    QFile file(m_config);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(m_config));
    QString text = QString::fromUtf8(file.readAll());
    file.close();
    const QRegularExpression robot(QStringLiteral("\\[robot\\][^\\[]*"));
    text.remove(robot);
    text += QStringLiteral("\n[robot]\nhost = 127.0.0.1\nport = %1\n").arg(port);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(text.toUtf8()) < 0)
        qFatal("%s cannot be written", qPrintable(m_config));
    file.close();
    require(ServiceRuntime::instance().start(m_config));
}

} // namespace KODMS::Tests
