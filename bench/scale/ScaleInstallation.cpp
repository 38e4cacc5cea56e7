// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/scale/ScaleInstallation.h"

#include "services/api/InstallationSetup.h"
#include "services/api/SampleData.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

#include <cstdio>
#include <stdexcept>

namespace KODMS::Bench {

using namespace Services;

namespace {

void mustSucceed(const Outcome &outcome)
{
    if (!outcome)
        throw std::runtime_error(outcome.text.toStdString());
}

QHash<QString, QString> readServerFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("no such file: " + path.toStdString());
    QHash<QString, QString> values;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')))
        values[line.section(QLatin1Char('='), 0, 0)] = line.section(QLatin1Char('='), 1);
    if (values.contains(QStringLiteral("reason")))
        throw std::runtime_error("no server: " + values[QStringLiteral("reason")].toStdString());
    return values;
}

QString shortUuid()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}

} // namespace

ScaleInstallation::ScaleInstallation(const QString &serverFile, int flows)
    : m_server(readServerFile(serverFile)), m_database(QStringLiteral("scale") + shortUuid()),
      m_password(shortUuid())
{
    mustSucceed(InstallationSetup::init(writeConfiguration(port()), QStringLiteral("chief"),
                                        QStringLiteral("Chief"), m_password));
    generate(flows);
}

QString ScaleInstallation::writeConfiguration(quint16 port)
{
    QFile file(m_dir.filePath(QStringLiteral("kodms.ini")));
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("cannot write the configuration");
    const QString text = QStringLiteral("[database]\ndriver=postgres\nhost=%1\nport=%2\nname=%3\n"
                                        "user=%4\npasswordFile=%5\nstatementTimeoutMs=600000\n"
                                        "[fileStore]\nkind=folder\nroot=store\n"
                                        "[paths]\nstaging=%6/\ndownload=%6/\n");
    file.write(text.arg(host())
                   .arg(port)
                   .arg(m_database, m_server[QStringLiteral("user")],
                        m_server[QStringLiteral("passwordFile")], m_dir.path())
                   .toUtf8());
    return file.fileName();
}

void ScaleInstallation::generate(int flows)
{
    std::fprintf(stderr, "generating %d flows ...\n", flows);
    mustSucceed(ServiceRuntime::instance().start(m_dir.filePath(QStringLiteral("kodms.ini"))));
    SignIn::actAsOperator();
    NoProgress progress;
    SampleRequest request;
    request.flows = flows;
    mustSucceed(SampleData::generate(request, progress));
    ServiceRuntime::instance().stop();
}

void ScaleInstallation::start(quint16 port)
{
    mustSucceed(ServiceRuntime::instance().start(writeConfiguration(port)));
    mustSucceed(SignIn::signIn(QStringLiteral("chief"), m_password));
}

void ScaleInstallation::changeByOthers(int times)
{
    const QString name = QStringLiteral("others");
    {
        QSqlDatabase connection = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
        connection.setHostName(host());
        connection.setPort(port());
        connection.setDatabaseName(m_database);
        connection.setUserName(m_server[QStringLiteral("user")]);
        QFile password(m_server[QStringLiteral("passwordFile")]);
        if (password.open(QIODevice::ReadOnly))
            connection.setPassword(QString::fromUtf8(password.readAll().trimmed()));
        if (!connection.open())
            throw std::runtime_error(connection.lastError().text().toStdString());
        QSqlQuery query(connection);
        const QString change = QStringLiteral("UPDATE job_flows SET tips = 'elsewhere' WHERE id = "
                                              "(SELECT min(id) + %1 FROM job_flows)");
        for (int i = 0; i < times; ++i) {
            if (!query.exec(change.arg(i)))
                throw std::runtime_error(query.lastError().text().toStdString());
        }
    }
    QSqlDatabase::removeDatabase(name);
}

} // namespace KODMS::Bench
