// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/transfer/MongoServer.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <unistd.h>

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

double MongoServer::cpu() const
{
    constexpr int TimeInUserMode = 11; // fields after the name of the program, as proc(5) has them
    QFile file(QStringLiteral("/proc/%1/stat").arg(lineIn(m_folder + QStringLiteral("/pid"))));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray line = file.readAll();
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    const double ticks =
        fields.value(TimeInUserMode).toDouble() + fields.value(TimeInUserMode + 1).toDouble();
    return 1000.0 * ticks / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

} // namespace KODMS::Bench
