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
    Transaction oneState(m_database, Transaction::Purpose::Read);
    data->log = readLogPlace();
    using Kind = IndexDictionaries::Kind;
    SqlQuery people = m_database.query("select_index_people");
    readRecords(people.exec(), Kind::People, data->dictionaries);
    SqlQuery customers = m_database.query("select_index_customers");
    readRecords(customers.exec(), Kind::Customers, data->dictionaries);
    readRows(IndexLayout::flows(), *data);
    readRows(IndexLayout::origFiles(), *data);
    oneState.commit();
    if (m_stop)
        return nullptr;
    return data;
}

void IndexBuilder::readRows(const IndexLayout &layout, IndexData &data)
{
    IndexTable &table = data.tableOf(layout);
    SqlQuery query = m_database.longQuery(layout.allRows);
    query.exec();
    const IndexRowReader reader(layout, query);
    while (!m_stop && query.next())
        table.append(reader.read(data.dictionaries));
    table.flush();
}

} // namespace KODMS::Services
