// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/SampleAccountsFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("InstallationSetup", text);
}

const QString noRoles = QStringLiteral("-");

/// Twelve characters that nobody mistakes for each other: some 58 bits.
QString randomPassword()
{
    const QString alphabet = QStringLiteral("abcdefghjkmnpqrstuvwxyz23456789");
    QString password;
    for (int i = 0; i < 12; ++i)
        password += alphabet[QRandomGenerator::system()->bounded(alphabet.size())];
    return password;
}

SampleAccount account(const char *login, const char *realName, const char *role)
{
    SampleAccount made;
    made.loginName = QString::fromLatin1(login);
    made.realName = QString::fromUtf8(realName);
    made.password = randomPassword();
    if (*role)
        made.roles << QString::fromLatin1(role);
    return made;
}

QString lineOf(const SampleAccount &account)
{
    const QString roles = account.roles.isEmpty() ? noRoles : account.roles.join(QLatin1Char(' '));
    return QStringList{account.loginName, account.password, account.realName, roles}.join(
               QLatin1Char('\t')) +
           QLatin1Char('\n');
}

Outcome unwritten(const QFile &file)
{
    return Outcome::failure(tr("无法写入 %1：%2").arg(file.fileName(), file.errorString()));
}

} // namespace

QString SampleAccountsFile::pathIn(const QString &folder)
{
    return QDir(folder).absoluteFilePath(QStringLiteral("accounts.txt"));
}

QVector<SampleAccount> SampleAccountsFile::makeAccounts()
{
    return {account("admin", "周明远", "admin"),
            account("prepare", "陈小雨", "pre-process"),
            account("dispatch", "林建国", "pre-check-assign"),
            account("testadmin", "何思齐", "test-admin"),
            account("review", "王雅琴", "check-authority"),
            account("files", "赵文博", "orig-file-update"),
            account("assign", "孙丽华", "orig-file-assign"),
            account("names", "郭子涵", "show-company-name"),
            account("robot", "机器人", "robot"),
            account("user", "李晓东", "")};
}

Outcome SampleAccountsFile::write(const QString &path, const QVector<SampleAccount> &accounts)
{
    QString text = QStringLiteral("# login\tpassword\tname\troles\n");
    for (const SampleAccount &one : accounts)
        text += lineOf(one);
    const QByteArray bytes = text.toUtf8();
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return unwritten(file);
    const bool written = file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) &&
                         file.write(bytes) == bytes.size() && file.flush();
    if (written)
        return Outcome::success();
    const Outcome why = unwritten(file);
    file.remove();
    return why;
}

Result<QVector<SampleAccount>> SampleAccountsFile::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Outcome::failure(tr("无法读取 %1：%2").arg(path, file.errorString()));
    QVector<SampleAccount> accounts;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const QStringList parts = line.split(QLatin1Char('\t'));
        if (parts.size() != 4)
            return Outcome::failure(tr("%1 中的一行无法识别").arg(path));
        const QStringList roles =
            parts[3] == noRoles ? QStringList() : parts[3].split(QLatin1Char(' '));
        accounts.append({parts[0], parts[1], parts[2], roles});
    }
    return accounts;
}

} // namespace KODMS::Services
