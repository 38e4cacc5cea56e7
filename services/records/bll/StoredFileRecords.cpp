// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/StoredFileRecords.h"

#include "services/records/Database.h"
#include "services/records/TimeText.h"

namespace KODMS::Services {

namespace {

std::optional<StoredFileRow> firstRow(SqlQuery &query)
{
    if (!query.exec().next())
        return std::nullopt;
    StoredFileRow file;
    file.id = query.number("id");
    file.guid = query.text("guid");
    file.baseName = query.text("base_name");
    file.storedName = query.text("stored_name");
    file.fileType = query.text("file_type");
    file.customerCode = query.text("customer_code");
    file.kind = static_cast<StoredFileKind>(query.number("kind"));
    return file;
}

} // namespace

std::optional<StoredFileRow> StoredFileRecords::byGuid(const QString &guid)
{
    SqlQuery query = m_database.query("select_orig_file_by_guid");
    return firstRow(query.bind(":guid", guid));
}

std::optional<StoredFileRow> StoredFileRecords::byStoredName(const QString &storedName)
{
    SqlQuery query = m_database.query("select_orig_file_by_name");
    return firstRow(query.bind(":name", storedName));
}

std::optional<StoredFileRow> StoredFileRecords::byGuidOrName(const QString &text)
{
    const auto file = byGuid(text);
    return file ? file : byStoredName(text);
}

bool StoredFileRecords::isRecorded(const QString &storedName)
{
    SqlQuery query = m_database.query("select_recorded_file_by_name");
    return query.bind(":name", storedName).exec().next();
}

int StoredFileRecords::insert(const StoredFileRow &file, int state, int userId)
{
    SqlQuery query = m_database.query("insert_orig_file");
    query.bind(":guid", file.guid).bind(":base", file.baseName).bind(":name", file.storedName);
    query.bind(":type", file.fileType).bind(":customer", file.customerCode);
    query.bind(":kind", static_cast<int>(file.kind)).bind(":state", state);
    query.bindId(":user", userId).bind(":time", storedNow()).exec();
    query.next();
    return query.number("id");
}

void StoredFileRecords::remove(int id)
{
    m_database.query("delete_orig_file").bind(":id", id).exec();
}

QVector<int> StoredFileRecords::flowsOf(int id)
{
    SqlQuery query = m_database.query("select_flows_of_file");
    for (const char *place : {":orig_file", ":import_file", ":result_file", ":compress_file"})
        query.bind(place, id);
    query.exec();
    QVector<int> flows;
    while (query.next())
        flows << query.number("flow_id");
    return flows;
}

int StoredFileRecords::users(int id)
{
    SqlQuery query = m_database.query("count_file_users");
    for (const char *place : {":compress_file", ":orig_file", ":import_file", ":result_file"})
        query.bind(place, id);
    query.exec();
    query.next();
    return query.number("users");
}

} // namespace KODMS::Services
