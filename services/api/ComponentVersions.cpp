// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/ComponentVersions.h"

#include "services/disk/Sha256.h"
#include "services/notices/NoticeHub.h"
#include "services/records/RecordContext.h"

#include <archive.h>
#include <isa-l.h>
#include <mongoc/mongoc.h>
#include <sodium.h>
#include <xlsxwriter.h>

namespace KODMS::Services {

namespace {

/// "libarchive 3.6.2" -> "3.6.2"
QString lastWord(const char *text)
{
    return QString::fromLatin1(text).section(QLatin1Char(' '), -1);
}

void addEngine(QVector<ComponentVersion> &all)
{
    RecordContext *context = RecordContext::current();
    if (!context)
        return;
    try {
        SqlQuery query = context->database().query("select_engine");
        query.exec();
        if (query.next())
            all.append({query.text("name"), query.text("version"), query.text("licence")});
    } catch (const SqlError &error) {
        qCWarning(lcRecords).noquote() << "componentVersions" << error.logText();
    }
}

} // namespace

QVector<ComponentVersion> componentVersions()
{
    QVector<ComponentVersion> all{
        {QStringLiteral("Qt"), QString::fromLatin1(qVersion()), QStringLiteral("LGPL-3.0")}};
    addEngine(all);
    all.append({QStringLiteral("libarchive"), lastWord(archive_version_string()),
                QStringLiteral("BSD-2-Clause")});
    all.append({QStringLiteral("ISA-L"),
                QStringLiteral("%1.%2.%3")
                    .arg(ISAL_MAJOR_VERSION)
                    .arg(ISAL_MINOR_VERSION)
                    .arg(ISAL_PATCH_VERSION),
                QStringLiteral("BSD-3-Clause")});
    all.append({QStringLiteral("libxlsxwriter"), QString::fromLatin1(lxw_version()),
                QStringLiteral("BSD-2-Clause")});
    all.append({QStringLiteral("libmongoc"), QString::fromLatin1(mongoc_get_version()),
                QStringLiteral("Apache-2.0")});
    if (const QByteArray version = Sha256::libraryVersion(); !version.isEmpty())
        all.append({QStringLiteral("OpenSSL"), QString::fromLatin1(version),
                    QStringLiteral("Apache-2.0")});
    all.append({QStringLiteral("libsodium"), QString::fromLatin1(sodium_version_string()),
                QStringLiteral("ISC")});
    return all;
}

} // namespace KODMS::Services
