// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexBuilder.h"

#include "services/records/Database.h"
#include "services/records/Transaction.h"
#include "services/search/IndexRowReader.h"
#include "services/search/IndexUnfit.h"

#include <utility>

namespace KODMS::Services {

namespace {

struct RecordTexts {
    const char *table;
    std::vector<const char *> columns;
};

const RecordTexts &textsOf(IndexDictionaries::Kind kind)
{
    static const RecordTexts people{"users", {"real_name"}};
    static const RecordTexts customers{"customers",
                                       {"short_name", "code", "superior_1", "superior_2"}};
    return kind == IndexDictionaries::Kind::People ? people : customers;
}

} // namespace

void IndexBuilder::readRecords(SqlQuery &query, IndexDictionaries::Kind kind,
                               IndexDictionaries &dictionaries)
{
    const RecordTexts &texts = textsOf(kind);
    while (query.next()) {
        const qint64 id = query.int64("id");
        std::vector<std::string> values;
        for (const char *column : texts.columns) {
            auto value = IndexRowReader::textOf(query.valueAt(query.placeOf(column)));
            if (!value)
                throw IndexUnfit(texts.table, id, column, "a text that is none");
            values.push_back(std::move(*value));
        }
        dictionaries.of(kind).set(id, std::move(values));
    }
}

LogPlace IndexBuilder::readLogPlace()
{
    LogPlace place;
    SqlQuery home = m_database.query("select_log_home");
    home.exec().next();
    place.home = home.text("home");
    SqlQuery span = m_database.query("select_change_log_span");
    span.exec().next();
    place.oldest = span.int64("oldest");
    place.newest = span.int64("newest");
    place.mark = span.text("mark");
    place.moment = span.text("moment");
    place.atWork = span.number("at_work");
    return place;
}

std::unique_ptr<IndexData> IndexBuilder::build(int segmentRows)
{
    auto data = std::make_unique<IndexData>(segmentRows);
    if (m_isStopped())
        return nullptr;
    Transaction oneState(m_database, Transaction::Purpose::Read);
    if (!readAll(*data))
        return nullptr;
    oneState.commit();
    return data;
}

bool IndexBuilder::readAll(IndexData &data)
{
    data.log = readLogPlace();
    using Kind = IndexDictionaries::Kind;
    return readRecords("select_index_people", Kind::People, data) &&
           readRecords("select_index_customers", Kind::Customers, data) &&
           readRows(IndexLayout::flows(), data) && readRows(IndexLayout::origFiles(), data);
}

bool IndexBuilder::readRecords(const char *statement, IndexDictionaries::Kind kind, IndexData &data)
{
    if (m_isStopped())
        return false;
    SqlQuery query = m_database.query(statement);
    readRecords(query.exec(), kind, data.dictionaries);
    return true;
}

bool IndexBuilder::readRows(const IndexLayout &layout, IndexData &data)
{
    if (m_isStopped())
        return false;
    IndexTable &table = data.tableOf(layout);
    SqlQuery query = m_database.longQuery(layout.allRows);
    query.exec();
    const IndexRowReader reader(layout, query);
    while (query.next()) {
        if (m_isStopped()) {
            m_database.abandon(); // the rest of a long result would come first
            return false;
        }
        table.append(reader.read(data.dictionaries));
    }
    table.flush();
    return true;
}

} // namespace KODMS::Services
