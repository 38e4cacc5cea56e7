// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/ChangeFollower.h"

#include "services/records/Database.h"
#include "services/search/IndexBuilder.h"
#include "services/search/IndexRowReader.h"

namespace KODMS::Services {

namespace {

enum ChangeKind { Everything, FlowRow, OrigFileRow, Customer, Person };

} // namespace

bool ChangeFollower::follow()
{
    Changed changed;
    std::int64_t last = m_data.lastChange;
    if (!readLog(changed, last))
        return false;
    using Kind = IndexDictionaries::Kind;
    readRecords(Kind::People, "select_index_person", changed.people);
    readRecords(Kind::Customers, "select_index_customer", changed.customers);
    std::vector<IndexTable::Change> flows = readRows(IndexLayout::flows(), changed.flows);
    std::vector<IndexTable::Change> files = readRows(IndexLayout::origFiles(), changed.origFiles);
    m_data.flows.apply(std::move(flows)); // from here on the database is not asked
    m_data.origFiles.apply(std::move(files));
    m_data.lastChange = last;
    return true;
}

/// The last entry known has to be there still: what is gone with it is not known. Where
/// none was known, the first one of all has to be.
bool ChangeFollower::readLog(Changed &changed, std::int64_t &last)
{
    constexpr std::int64_t firstOfAll = 1;
    const std::int64_t known = m_data.lastChange;
    SqlQuery log = m_database.query("select_changes");
    log.bind(":seq", static_cast<qint64>(known)).bind(":most", mostChanges + 2).exec();
    const int seq = log.placeOf("seq");
    const int kind = log.placeOf("kind");
    const int id = log.placeOf("row_id");
    const int settled = log.placeOf("is_settled");
    int entries = 0;
    while (log.next()) {
        const qint64 entry = log.valueAt(seq).toLongLong();
        if (entries == 0 && entry != (known == 0 ? firstOfAll : known))
            return false;
        ++entries;
        if (entry != known &&
            !note(log.valueAt(kind).toInt(), log.valueAt(id).toLongLong(), changed))
            return false;
        if (log.valueAt(settled).toInt() == 1) // else it is read again, with what comes before it
            last = entry;
    }
    return entries <= mostChanges && (entries > 0 || known == 0);
}

bool ChangeFollower::note(int kind, std::int64_t id, Changed &changed)
{
    switch (kind) {
    case FlowRow:
        changed.flows.insert(id);
        return true;
    case OrigFileRow:
        changed.origFiles.insert(id);
        return true;
    case Customer:
        changed.customers.insert(id);
        return true;
    case Person:
        changed.people.insert(id);
        return true;
    default:
        return false; // everything, or what this program does not know
    }
}

void ChangeFollower::readRecords(IndexDictionaries::Kind kind, const char *statement,
                                 const Ids &ids)
{
    for (const std::int64_t id : ids) {
        SqlQuery query = m_database.query(statement);
        query.bind(":id", static_cast<qint64>(id));
        IndexBuilder::readRecords(query.exec(), m_data.dictionaries.of(kind),
                                  IndexBuilder::textsOf(kind));
    }
}

std::vector<IndexTable::Change> ChangeFollower::readRows(const IndexLayout &layout, const Ids &ids)
{
    std::vector<IndexTable::Change> changes;
    if (ids.empty())
        return changes;
    SqlQuery query = m_database.query(layout.oneRow);
    for (const std::int64_t id : ids) {
        query.bind(":id", static_cast<qint64>(id)).exec();
        IndexTable::Change change;
        change.id = id;
        if (query.next())
            change.row = IndexRowReader(layout, query).read(m_data.dictionaries);
        changes.push_back(std::move(change));
    }
    return changes;
}

} // namespace KODMS::Services
