// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/ChangeFollower.h"

#include "services/records/Database.h"
#include "services/search/IndexBuilder.h"
#include "services/search/IndexRowReader.h"

namespace KODMS::Services {

namespace {

enum ChangeKind { Everything, FlowRow, OrigFileRow, Customer, Person };

constexpr int idsAtOnce = 1000;

/// The ids with commas between them, in lists of a length that one statement takes.
QStringList idLists(const std::set<std::int64_t> &ids)
{
    QStringList lists;
    QStringList part;
    for (const std::int64_t id : ids) {
        part << QString::number(id);
        if (part.size() < idsAtOnce)
            continue;
        lists << part.join(QLatin1Char(','));
        part.clear();
    }
    if (!part.isEmpty())
        lists << part.join(QLatin1Char(','));
    return lists;
}

} // namespace

ChangeFollower::Result ChangeFollower::follow(int most)
{
    if (!isAtHome())
        return Result::Lost;
    Changed changed;
    LogPlace now = m_data.log;
    const Result read = readLog(most, changed, now);
    if (read != Result::UpToDate)
        return read;
    using Kind = IndexDictionaries::Kind;
    readRecords(Kind::People, "select_index_people_by_id", changed.people);
    readRecords(Kind::Customers, "select_index_customers_by_id", changed.customers);
    std::vector<IndexTable::Change> flows = readRows(IndexLayout::flows(), changed.flows);
    std::vector<IndexTable::Change> files = readRows(IndexLayout::origFiles(), changed.origFiles);
    m_data.flows.apply(std::move(flows)); // from here on the database is not asked
    m_data.origFiles.apply(std::move(files));
    m_data.log = now;
    return Result::UpToDate;
}

/// A new connection may lead to a server that has taken over from another one, or to a
/// database that was put back. What is the same in both may still differ before it.
bool ChangeFollower::isAtHome()
{
    LogPlace &known = m_data.log;
    if (known.generation == m_database.generation())
        return true;
    SqlQuery query = m_database.query("select_log_home");
    query.exec().next();
    if (query.text("home") != known.home)
        return false;
    known.generation = m_database.generation();
    return true;
}

/// The newest entry known has to be there still: what is gone with it is not known. Where
/// none was known, the next one has to be. Old entries that go take nothing along,
/// unless one of a transaction that was at work may be among them.
ChangeFollower::Result ChangeFollower::readLog(int most, Changed &changed, LogPlace &now)
{
    const LogPlace &known = m_data.log;
    SqlQuery log = m_database.query("select_changes");
    log.bind(":seq", static_cast<qint64>(known.newest)).bind(":moment", known.moment);
    log.bind(":most", most + 3).exec(); // the state, the entry known, and one too much
    bool isKnownThere = false;
    int entries = 0;
    while (log.next()) {
        if (log.number("is_state") == 1) {
            now.oldest = log.int64("seq");
            now.moment = log.text("moment");
            now.atWork = log.number("at_work");
        } else if (log.int64("seq") == known.newest) {
            isKnownThere = log.text("mark") == known.mark;
        } else {
            ++entries;
            if (!readEntry(log, changed, now))
                return Result::Lost;
        }
    }
    if (known.newest == 0)
        isKnownThere = now.oldest == (entries == 0 ? known.oldest : 1 - known.oldest);
    if (!isKnownThere || (known.atWork > 0 && now.oldest != known.oldest))
        return Result::Lost;
    return entries > most ? Result::TooMuch : Result::UpToDate;
}

bool ChangeFollower::readEntry(const SqlQuery &log, Changed &changed, LogPlace &now) const
{
    const std::int64_t seq = log.int64("seq");
    if (seq > now.newest) {
        now.newest = seq;
        now.mark = log.text("mark");
    }
    return note(log.number("kind"), log.int64("row_id"), changed);
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
    const QStringList lists = idLists(ids);
    for (const QString &list : lists) {
        SqlQuery query = m_database.query(statement);
        query.bind(":ids", list);
        IndexBuilder::readRecords(query.exec(), kind, m_data.dictionaries);
    }
}

/// An id without a row is one that is gone.
std::vector<IndexTable::Change> ChangeFollower::readRows(const IndexLayout &layout, const Ids &ids)
{
    std::vector<IndexTable::Change> changes;
    changes.reserve(ids.size());
    Ids gone = ids;
    const QStringList lists = idLists(ids);
    for (const QString &list : lists) {
        SqlQuery query = m_database.query(layout.someRows);
        query.bind(":ids", list).exec();
        const IndexRowReader reader(layout, query);
        while (query.next()) {
            IndexRow row = reader.read(m_data.dictionaries);
            gone.erase(row.id);
            const PackedColumn::Number id = row.id;
            changes.push_back({id, std::move(row)});
        }
    }
    for (const std::int64_t id : gone)
        changes.push_back({id, std::nullopt});
    return changes;
}

} // namespace KODMS::Services
