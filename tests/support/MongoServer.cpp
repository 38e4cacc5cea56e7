// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/MongoServer.h"

#include <QFile>

#include <cstdio>

namespace KODMS::Tests {

namespace {

constexpr int Skipped = 77;

QString lineIn(const char *name)
{
    const QString folder = qEnvironmentVariable("KODMS_TEST_MONGO");
    QFile file(folder + QLatin1Char('/') + QString::fromLatin1(name));
    if (folder.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readLine()).trimmed();
}

} // namespace

QString MongoServer::uri()
{
    return lineIn("uri");
}

QString MongoServer::reason()
{
    const QString reason = lineIn("reason");
    return reason.isEmpty() ? QStringLiteral("KODMS_TEST_MONGO names no running server") : reason;
}

bool MongoServer::isForeign()
{
    return qEnvironmentVariableIsSet("KODMS_TEST_MONGO_URI");
}

int MongoServer::skip()
{
    std::printf("SKIP   : no server for the tests of the GridFS store: %s\n", qPrintable(reason()));
    return Skipped;
}

} // namespace KODMS::Tests
