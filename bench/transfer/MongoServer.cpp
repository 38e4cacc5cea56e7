// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/transfer/MongoServer.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace KODMS::Bench {

namespace {

QString lineIn(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readLine()).trimmed()
                                          : QString();
}

void command(const char *what, const QString &folder)
{
    QProcess::execute(QStringLiteral(KODMS_SOURCE_DIR "/scripts/mongo-test-server"),
                      {QString::fromLatin1(what), folder});
}

} // namespace

MongoServer::MongoServer(const QString &folder) : m_folder(folder)
{
    QDir().mkpath(folder);
    command("start", folder);
    m_uri = lineIn(folder + QStringLiteral("/uri"));
    m_reason = lineIn(folder + QStringLiteral("/reason"));
}

MongoServer::~MongoServer()
{
    command("stop", m_folder);
}

} // namespace KODMS::Bench
