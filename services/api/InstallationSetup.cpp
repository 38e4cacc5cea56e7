// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/InstallationSetup.h"

#include "services/api/ServiceRuntime.h"
#include "services/api/internal/NewInstallation.h"
#include "services/api/internal/SampleAccountsFile.h"
#include "services/api/internal/UserRules.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("InstallationSetup", text);
}

Outcome refuseWhileRunning()
{
    if (ServiceRuntime::instance().isRunning())
        return Outcome::failure(tr("服务正在运行，不能在此时初始化"));
    return Outcome::success();
}

/// The configuration that is there, else the defaults, not yet written.
Result<Configuration> configurationFor(const QString &iniPath)
{
    const QString path = iniPath.isEmpty() ? Configuration::defaultPath() : iniPath;
    if (QFileInfo::exists(path))
        return Configuration::load(path);
    return Configuration::defaultsFor(path);
}

NewUser firstAdmin(const QString &loginName, const QString &realName)
{
    NewUser admin;
    admin.loginName = loginName;
    admin.realName = realName;
    admin.roles << roleName(Role::Admin);
    return admin;
}

/// Departments and posts as the assignee boxes of the desks ask for them.
NewUser newUserFor(const SampleAccount &account)
{
    NewUser user;
    user.loginName = account.loginName;
    user.realName = account.realName;
    user.password = account.password;
    user.roles = account.roles;
    const bool reviews = account.roles.contains(roleName(Role::CheckAuthority));
    const bool prepares =
        account.roles.isEmpty() || account.roles.contains(roleName(Role::PreProcess));
    user.department = reviews ? 3 : prepares ? 2 : 1;
    user.post = reviews ? 10 : prepares ? 6 : 1;
    return user;
}

Result<std::vector<UserRow>> rowsFor(const QVector<SampleAccount> &accounts)
{
    std::vector<UserRow> rows;
    for (const SampleAccount &account : accounts) {
        auto row = UserRules::rowFor(newUserFor(account));
        if (!row)
            return row.outcome;
        rows.push_back(row.value);
    }
    return rows;
}

/// A configuration alone may wait there: it says where the sample shall be.
bool isFree(const QString &folder, const QString &configPath)
{
    const QStringList names = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden |
                                                     QDir::System | QDir::NoDotAndDotDot);
    return names.isEmpty() || names == QStringList(QFileInfo(configPath).fileName());
}

Outcome makeSampleFolder(const QString &folder)
{
    if (QFileInfo::exists(folder) && !isFree(folder, InstallationSetup::sampleConfigPath(folder)))
        return Outcome::failure(tr("文件夹 %1 不是空的").arg(folder));
    if (!QDir().mkpath(folder))
        return Outcome::failure(tr("无法创建文件夹 %1").arg(folder));
    return Outcome::success();
}

/// The configuration that waits in the folder, now one of a sample; else the defaults there,
/// not yet written.
Result<Configuration> sampleConfiguration(const QString &folder)
{
    const QString path = InstallationSetup::sampleConfigPath(folder);
    const bool waits = QFileInfo::exists(path);
    auto configuration = waits ? Configuration::load(path)
                               : Result<Configuration>(Configuration::defaults(path, folder));
    if (!configuration)
        return configuration;
    configuration.value.isSample = true;
    if (const Outcome saved = waits ? configuration.value.save() : Outcome::success(); !saved)
        return saved;
    return configuration;
}

Outcome fillSampleFolder(const QString &folder)
{
    const QString data = QDir(folder).absolutePath();
    const auto configuration = sampleConfiguration(data);
    if (!configuration)
        return configuration.outcome;
    const QVector<SampleAccount> accounts = SampleAccountsFile::makeAccounts();
    const auto rows = rowsFor(accounts);
    if (!rows)
        return rows.outcome;
    const QString accountsFile = SampleAccountsFile::pathIn(data);
    const Outcome written = SampleAccountsFile::write(accountsFile, accounts);
    if (!written)
        return written;
    const Outcome made = NewInstallation(configuration.value).make(rows.value);
    if (!made)
        QFile::remove(accountsFile); // names accounts that are not there
    return made;
}

} // namespace

Outcome InstallationSetup::check(const QString &iniPath, const QString &adminLogin,
                                 const QString &adminRealName)
{
    const auto configuration = configurationFor(iniPath);
    if (!configuration)
        return configuration.outcome;
    Outcome outcome = UserRules::checkNames(firstAdmin(adminLogin, adminRealName));
    return outcome ? NewInstallation(configuration.value).refuseExisting() : outcome;
}

Outcome InstallationSetup::init(const QString &iniPath, const QString &adminLogin,
                                const QString &adminRealName, const QString &password)
{
    const Outcome idle = refuseWhileRunning();
    if (!idle)
        return idle;
    NewUser admin = firstAdmin(adminLogin, adminRealName);
    admin.password = password;
    const auto row = UserRules::rowFor(admin);
    if (!row)
        return row.outcome;
    const auto configuration = configurationFor(iniPath);
    if (!configuration)
        return configuration.outcome;
    return NewInstallation(configuration.value).make({row.value});
}

Outcome InstallationSetup::createSample(const QString &folder)
{
    Outcome outcome = refuseWhileRunning();
    if (outcome)
        outcome = makeSampleFolder(folder);
    return outcome ? fillSampleFolder(folder) : outcome;
}

Result<QVector<SampleAccount>> InstallationSetup::sampleAccounts(const QString &folder)
{
    return SampleAccountsFile::read(SampleAccountsFile::pathIn(folder));
}

QString InstallationSetup::sampleConfigPath(const QString &folder)
{
    return QDir(folder).absoluteFilePath(QStringLiteral("kodms.ini"));
}

} // namespace KODMS::Services
