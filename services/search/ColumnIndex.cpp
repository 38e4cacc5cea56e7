// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/ColumnIndex.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/RecoveryPoint.h"
#include "services/records/conditions/SearchRequest.h"
#include "services/search/ChangeFollower.h"
#include "services/search/IndexConditionReader.h"
#include "services/search/TableSearch.h"

#include <limits>
#include <system_error>
#include <utility>

namespace KODMS::Services {

namespace {

constexpr std::chrono::seconds timeBetweenTries{60};
constexpr std::chrono::seconds timeAfterPassing{5}; ///< a server may be starting again

/// About a hundred scans of a column of texts. Longer lists go to the statements, which
/// have a time limit.
constexpr int mostCost = 5000;

/// The window of the page; nothing when the rows cannot be given in that order.
std::optional<TableSearch::Window> windowOf(const IndexLayout &layout, const SearchRequest &request)
{
    TableSearch::Window window;
    window.isDescending = request.isDescending;
    window.size = std::numeric_limits<std::int64_t>::max();
    if (request.page) {
        window.offset = request.page->offset;
        window.size = request.page->size;
    }
    if (request.orderBy == nullptr)
        return window;
    if (qstrcmp(request.orderBy->name, layout.orderField) == 0) {
        window.order = TableSearch::Order::Time;
        return window;
    }
    const IndexLayout::Field *field = layout.field(request.orderBy->name);
    if (field == nullptr || field->kind != IndexLayout::Field::Kind::Id)
        return std::nullopt;
    return window;
}

} // namespace

ColumnIndex::ColumnIndex(const DatabaseSettings &settings, const Options &options)
    : m_options(options), m_loader(settings, options.segmentRows)
{
}

std::optional<ViewIndex::Answer> ColumnIndex::find(Database &database, const SearchView &view,
                                                   const SearchRequest &request,
                                                   const Condition &countWhere)
{
    if (database.isWriting()) // what may yet be undone is not for the index
        return std::nullopt;
    takeLoaded();
    if (m_data == nullptr && isWaiting())
        return std::nullopt;
    const RecoveryPoint before(database);
    try {
        if (isFresh(database))
            return search(view, request, countWhere);
    } catch (const SqlError &error) { // the statements say what is wrong, if it stays so
        fail(error.logText());
    }
    return std::nullopt;
}

bool ColumnIndex::isReady()
{
    takeLoaded();
    return m_data != nullptr;
}

bool ColumnIndex::isFresh(Database &database)
{
    if (m_data != nullptr)
        return follow(database);
    if (isWorthIt(database))
        startLoading();
    return false;
}

void ColumnIndex::fail(const QString &why, bool isPassing)
{
    if (why != m_failure) // once, until it works again; searches take longer meanwhile
        qCWarning(lcRecords).noquote() << "column index:" << why;
    m_hasFailed = true;
    m_failure = why;
    m_nextTry =
        std::chrono::steady_clock::now() + (isPassing ? timeAfterPassing : timeBetweenTries);
}

/// For what is being read, or for the next try.
bool ColumnIndex::isWaiting() const
{
    return m_loader.isBusy() || (m_hasFailed && std::chrono::steady_clock::now() < m_nextTry);
}

bool ColumnIndex::isWorthIt(Database &database) const
{
    SqlQuery largest = database.query("largest_flow_id");
    largest.exec().next();
    return largest.int64("largest") >= m_options.smallestTable;
}

void ColumnIndex::startLoading(std::unique_ptr<IndexData> known)
{
    try {
        m_loader.start(std::move(known));
    } catch (const std::system_error &error) {
        fail(QString::fromLocal8Bit(error.what()));
    }
}

void ColumnIndex::takeLoaded()
{
    if (!m_loader.isBusy())
        return;
    auto loaded = m_loader.take();
    if (!loaded)
        return;
    m_data = std::move(loaded->data);
    m_hasFailed = false;
    if (m_data == nullptr) {
        fail(loaded->problem, loaded->isPassing);
        return;
    }
    if (loaded->isPassing) { // it goes on from what was known
        m_refusals = 0;
        qCInfo(lcRecords).noquote() << "column index: could not catch up:" << loaded->problem;
        return;
    }
    m_loadMilliseconds = loaded->milliseconds;
    m_failure.clear();
    qCInfo(lcRecords) << "column index:" << m_data->flows.rows() << "flows and"
                      << m_data->origFiles.rows() << "original files in" << m_data->bytes() / 1024
                      << "KiB, read in" << m_loadMilliseconds << "ms";
}

/// A failure on the way leaves nothing half done: what was there is as it was, or is gone
/// and read again.
bool ColumnIndex::follow(Database &database)
{
    std::unique_ptr<IndexData> data = std::move(m_data);
    auto result = ChangeFollower::Result::Lost;
    try {
        result = ChangeFollower(database, *data).follow(mostChanges);
    } catch (const SqlError &error) {
        if (error.isPassing()) // it goes on from here when the database answers again
            m_data = std::move(data);
        throw;
    } catch (const std::exception &error) {
        if (!database.isInTransaction()) { // statements that have seen different states
            m_data = std::move(data);
            return false;
        }
        qCInfo(lcRecords) << "column index: cannot follow:" << error.what();
    }
    if (result == ChangeFollower::Result::UpToDate) {
        m_data = std::move(data);
        m_refusals = 0;
        return true;
    }
    if (result == ChangeFollower::Result::Lost)
        data.reset();
    refuse(std::move(data));
    return false;
}

/// What is of no use as soon as it was read would be of none the next time either.
void ColumnIndex::refuse(std::unique_ptr<IndexData> known)
{
    ++m_refusals;
    if (m_refusals <= m_options.mostRefusals) {
        startLoading(std::move(known));
        return;
    }
    m_refusals = 0;
    fail(QStringLiteral("everything changes faster than it is read"));
}

std::optional<ViewIndex::Answer> ColumnIndex::search(const SearchView &view,
                                                     const SearchRequest &request,
                                                     const Condition &countWhere)
{
    const IndexLayout &layout = IndexLayout::of(view);
    const auto window = windowOf(layout, request);
    const IndexConditionReader reader(layout, m_data->dictionaries);
    const auto where = reader.read(request.where);
    const bool isSame = request.where == countWhere;
    const auto counted = isSame ? where : reader.read(countWhere);
    if (!window || !where || !counted || where->cost() > mostCost || counted->cost() > mostCost)
        return std::nullopt;
    TableSearch page(m_data->tableOf(layout));
    page.run(*where, *window);
    Answer answer;
    answer.ids.reserve(static_cast<int>(page.ids().size()));
    for (const PackedColumn::Number id : page.ids())
        answer.ids << static_cast<int>(id);
    answer.totalCount = static_cast<int>(page.count());
    answer.moment = m_data->log.moment;
    if (!isSame) {
        TableSearch count(m_data->tableOf(layout));
        count.run(*counted, {TableSearch::Order::Time, false, 0, 0});
        answer.totalCount = static_cast<int>(count.count());
    }
    return answer;
}

IndexStatus ColumnIndex::status() const
{
    IndexStatus status;
    status.loadMilliseconds = m_loadMilliseconds;
    if (m_data != nullptr) {
        status.state = IndexStatus::State::Ready;
        status.flows = m_data->flows.rows();
        status.origFiles = m_data->origFiles.rows();
        status.bytes = static_cast<std::int64_t>(m_data->bytes());
    } else if (m_loader.isBusy()) {
        status.state = IndexStatus::State::Loading;
    } else if (m_hasFailed) {
        status.state = IndexStatus::State::Failed;
    }
    return status;
}

void ColumnIndex::load()
{
    takeLoaded();
    if (m_data != nullptr)
        return;
    if (!m_loader.isBusy())
        startLoading();
    m_loader.wait();
    takeLoaded();
}

} // namespace KODMS::Services
