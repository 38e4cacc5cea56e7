// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexBuilder.h"

#include "services/records/Database.h"
#include "services/records/Transaction.h"
#include "services/search/IndexRowReader.h"

namespace KODMS::Services {

const std::vector<const char *> &IndexBuilder::textsOf(IndexDictionaries::Kind kind)
{
    static const std::vector<const char *> people{"real_name"};
    static const std::vector<const char *> customers{"short_name", "code", "superior_1",
                                                     "superior_2"};
    return kind == IndexDictionaries::Kind::People ? people : customers;
}

void IndexBuilder::readRecords(SqlQuery &query, RecordDictionary &records,
                               const std::vector<const char *> &texts)
{
    while (query.next()) {
        std::vector<std::string> values;
        for (const char *text : texts)
            values.push_back(IndexRowReader::textOf(query.valueAt(query.placeOf(text))));
        records.set(query.int64("id"), std::move(values));
    }
}

std::unique_ptr<IndexData> IndexBuilder::build(int segmentRows)
{
    auto data = std::make_unique<IndexData>(segmentRows);
    Transaction oneState(m_database, Transaction::Purpose::Read);
    SqlQuery span = m_database.query("select_change_log_span");
    span.exec().next();
    data->lastChange = span.int64("newest");
    using Kind = IndexDictionaries::Kind;
    SqlQuery people = m_database.query("select_index_people");
    readRecords(people.exec(), data->dictionaries.of(Kind::People), textsOf(Kind::People));
    SqlQuery customers = m_database.query("select_index_customers");
    readRecords(customers.exec(), data->dictionaries.of(Kind::Customers), textsOf(Kind::Customers));
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
