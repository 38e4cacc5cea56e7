// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/StatusCommand.h"

#include "services/api/SearchIndex.h"
#include "services/api/ServiceRuntime.h"

#include <QJsonArray>
#include <QJsonObject>

namespace KODMS::Admin {

namespace {

QJsonObject asJson(const Services::SearchIndexState &index)
{
    return {{QStringLiteral("ready"), index.isReady},
            {QStringLiteral("flows"), index.flows},
            {QStringLiteral("originalFiles"), index.origFiles},
            {QStringLiteral("bytes"), static_cast<double>(index.bytes)},
            {QStringLiteral("milliseconds"), index.milliseconds}};
}

} // namespace

Report StatusCommand::work(const Invocation &)
{
    const auto &services = Services::ServiceRuntime::instance();
    const QStringList notices = services.configurationNotices();
    const Services::SearchIndexState index = Services::SearchIndex::load();
    QStringList lines{
        QStringLiteral("configuration  ") + services.configPath(),
        QStringLiteral("database       ") + services.databaseText(),
        QStringLiteral("schema         ") + QString::number(services.schemaVersion()),
        QStringLiteral("file store     ") + services.fileStoreText(),
        QStringLiteral("kind           ") +
            (services.isSample() ? QStringLiteral("sample") : QStringLiteral("real use")),
        QStringLiteral("search index   ") + index.text,
    };
    for (const QString &notice : notices)
        lines << QStringLiteral("notice         ") + notice;
    return Report::success(lines,
                           {{QStringLiteral("config"), services.configPath()},
                            {QStringLiteral("database"), services.databaseText()},
                            {QStringLiteral("schemaVersion"), services.schemaVersion()},
                            {QStringLiteral("fileStore"), services.fileStoreText()},
                            {QStringLiteral("sample"), services.isSample()},
                            {QStringLiteral("searchIndex"), asJson(index)},
                            {QStringLiteral("notices"), QJsonArray::fromStringList(notices)}});
}

} // namespace KODMS::Admin
