// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/scale/ScaleInstallation.h"

#include "bench/support/MustSucceed.h"
#include "services/api/InstallationSetup.h"
#include "services/api/SampleData.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"
#include "tests/support/ServerFile.h"

#include <QFile>
#include <QUuid>

#include <cstdio>
#include <stdexcept>

namespace KODMS::Bench {

using namespace Services;

namespace {

Tests::ServerFile readServerFile(const QString &path)
{
    Tests::ServerFile file(path);
    if (!file.isServer())
        throw std::runtime_error(file.isRead() ? "no server: " + file.reason().toStdString()
                                               : "no such file: " + path.toStdString());
    return file;
}

QString shortUuid()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}

} // namespace

ScaleInstallation::ScaleInstallation(const QString &serverFile, int flows) : m_password(shortUuid())
{
    const Tests::ServerFile file = readServerFile(serverFile);
    m_server = file.settings(QStringLiteral("scale") + shortUuid());
    m_pid = static_cast<int>(file.pid());
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
                   .arg(m_server.name, m_server.user, m_server.passwordFile, m_dir.path())
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
    if (!m_others)
        m_others = std::make_unique<Tests::PlainConnection>(m_server);
    for (int i = 0; i < times; ++i)
        m_others->run(
            QStringLiteral(
                "WITH changed AS (UPDATE job_flows SET tips = 'elsewhere' WHERE id = "
                "(SELECT min(id) + %1 FROM job_flows) RETURNING id) INSERT INTO events "
                "(create_time, action, record_kind, record_id) SELECT "
                "'2024-03-18T00:00:00.000Z', 'remark.UpdateTips', 'flow', id FROM changed")
                .arg(i));
}

} // namespace KODMS::Bench
