// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/common/support/TestInstallation.h"

#include "services/api/InstallationSetup.h"
#include "services/api/ServiceRuntime.h"
#include "services/records/bll/UserRecords.h"
#include "tests/support/PlainConnection.h"

#include <QDir>

namespace KODMS::Tests {

using namespace Services;

namespace {

void must(const Outcome &outcome)
{
    if (!outcome)
        qFatal("%s", qPrintable(outcome.text));
}

/// The database of a fresh installation, made once by the product itself: the
/// password's hash and the schema take their time.
const TestDatabase &freshDatabase()
{
    static TestDatabase *made = nullptr;
    if (made)
        return *made;
    made = &TestDatabase::lasting();
    const QTemporaryDir dir;
    auto configuration = Configuration::defaultsFor(dir.filePath(QStringLiteral("kodms.ini")));
    configuration.database = made->settings();
    must(configuration.save());
    must(InstallationSetup::init(configuration.filePath, QStringLiteral("admin"),
                                 QStringLiteral("管理员"), QStringLiteral("password for tests")));
    made->freeze();
    return *made;
}

} // namespace

TestInstallation::TestInstallation()
    : m_database(path(QStringLiteral("kodms.db")), TestDatabase::Begin::Absent)
{
    m_database.copyFrom(freshDatabase());
    Configuration configuration = Configuration::defaultsFor(iniPath());
    m_database.setIn(configuration);
    must(configuration.save());
    start();
}

TestInstallation::~TestInstallation()
{
    stop();
}

void TestInstallation::start()
{
    stop();
    must(ServiceRuntime::instance().start(iniPath()));
    database().run(TestDatabase::hurry());
}

void TestInstallation::stop()
{
    ServiceRuntime::instance().stop();
}

Runtime &TestInstallation::runtime()
{
    return *Runtime::current();
}

Database &TestInstallation::database()
{
    return runtime().records().database();
}

FileStore &TestInstallation::store()
{
    return runtime().fileStore();
}

int TestInstallation::actAs(const QString &login, const RoleSet &roles)
{
    UserRecords users(database());
    auto user = users.byLogin(login);
    if (!user) {
        UserRow made;
        made.loginName = login;
        made.realName = login.toUpper();
        made.passwordHash = QStringLiteral("none");
        made.roles = roles;
        users.insert(made);
        user = users.byLogin(login);
    }
    runtime().setActor(user->actor());
    return user->id;
}

void TestInstallation::signOut()
{
    runtime().setActor({});
}

QString TestInstallation::iniPath() const
{
    return path(QStringLiteral("kodms.ini"));
}

QString TestInstallation::staging() const
{
    return Runtime::current()->configuration().paths.staging;
}

QStringList TestInstallation::entries(const QString &folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

QVariant TestInstallation::value(const QString &sql)
{
    SqlQuery query = database().prepare(QStringLiteral("SELECT (%1) AS value").arg(sql));
    query.exec();
    if (!query.next() || query.isNull("value"))
        return QVariant();
    return query.text("value");
}

QStringList TestInstallation::column(const QString &sql) const
{
    return PlainConnection(m_database.settings()).texts(sql);
}

} // namespace KODMS::Tests
