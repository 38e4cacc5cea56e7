// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/BenchServer.h"

#include "services/records/Database.h"

#include <QFile>
#include <QProcess>

namespace KODMS::Bench {

using namespace Services;

BenchServer::BenchServer()
{
    run({QStringLiteral("start"), m_dir.path(), QStringLiteral("child")});
    readFile();
}

BenchServer::~BenchServer()
{
    run({QStringLiteral("stop"), m_dir.path()});
}

bool BenchServer::run(const QStringList &arguments)
{
    QProcess starter;
    starter.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    starter.setStandardOutputFile(QProcess::nullDevice());
    starter.start(QStringLiteral(KODMS_SERVER_STARTER), arguments);
    return starter.waitForFinished(-1) && starter.exitCode() == 0;
}

void BenchServer::readFile()
{
    m_problem = QStringLiteral("it could not be started");
    m_settings.driver = QStringLiteral("postgres");
    m_settings.name = QStringLiteral("postgres");
    QFile file(m_dir.filePath(QStringLiteral("server")));
    if (!file.open(QIODevice::ReadOnly))
        return;
    m_problem.clear();
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QString key = line.section(QLatin1Char('='), 0, 0);
        const QString value = line.section(QLatin1Char('='), 1);
        if (key == QLatin1String("reason"))
            m_problem = value;
        else if (key == QLatin1String("host"))
            m_settings.host = value;
        else if (key == QLatin1String("port"))
            m_settings.port = value.toInt();
        else if (key == QLatin1String("user"))
            m_settings.user = value;
        else if (key == QLatin1String("passwordFile"))
            m_settings.passwordFile = value;
    }
}

DatabaseSettings BenchServer::freshDatabase()
{
    DatabaseSettings settings = m_settings;
    settings.name = QStringLiteral("bench_%1").arg(++m_databases);
    Database(m_settings)
        .run(QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 ENCODING 'UTF8' "
                            "LOCALE 'C.UTF-8'")
                 .arg(settings.name));
    return settings;
}

} // namespace KODMS::Bench
