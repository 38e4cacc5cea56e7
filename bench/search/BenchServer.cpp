// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/BenchServer.h"

#include "services/records/Database.h"
#include "tests/support/ServerFile.h"

#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>

namespace KODMS::Bench {

using namespace Services;

BenchServer::BenchServer(const QString &keptFolder)
    : m_folder(keptFolder.isEmpty() ? m_ownFolder.path() : keptFolder)
{
    QStringList start{QStringLiteral("start"), m_folder};
    if (!isKept())
        start << QStringLiteral("child");
    run(start);
    readFile();
}

BenchServer::~BenchServer()
{
    if (!isKept())
        run({QStringLiteral("stop"), m_folder});
}

bool BenchServer::run(const QStringList &arguments)
{
    QProcess starter;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!environment.contains(QStringLiteral("KODMS_TEST_BUFFERS"))) // as for a million flows
        environment.insert(QStringLiteral("KODMS_TEST_BUFFERS"), QStringLiteral("2GB"));
    starter.setProcessEnvironment(environment);
    starter.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    starter.setStandardOutputFile(QProcess::nullDevice());
    starter.start(QStringLiteral(KODMS_SERVER_STARTER), arguments);
    return starter.waitForFinished(-1) && starter.exitCode() == 0;
}

void BenchServer::readFile()
{
    const Tests::ServerFile file(QDir(m_folder).filePath(QStringLiteral("server")));
    m_problem = file.isRead() ? file.reason() : QStringLiteral("it could not be started");
    m_settings = file.settings(QStringLiteral("postgres"));
}

DatabaseSettings BenchServer::databaseFor(int flows)
{
    DatabaseSettings settings = m_settings;
    settings.name = QStringLiteral("bench_%1").arg(flows);
    Database server(m_settings);
    SqlQuery known =
        server.prepare(QStringLiteral("SELECT 1 AS there FROM pg_database WHERE datname = ?"));
    if (!known.bind(0, settings.name).exec().next())
        server.run(QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 ENCODING 'UTF8' "
                                  "LOCALE 'C.UTF-8'")
                       .arg(settings.name));
    return settings;
}

} // namespace KODMS::Bench
