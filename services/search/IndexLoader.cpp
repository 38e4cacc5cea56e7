// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexLoader.h"

#include "services/records/Database.h"
#include "services/records/Transaction.h"
#include "services/search/ChangeFollower.h"
#include "services/search/IndexBuilder.h"

#include <chrono>
#include <utility>

namespace KODMS::Services {

namespace {

/// About as many changes are read in the time in which everything is.
constexpr int mostChanges = 50'000;

bool catchUp(Database &database, IndexData &data)
{
    data.log.generation = LogPlace::unchecked; // it was another connection's
    Transaction oneState(database, Transaction::Purpose::Read);
    const auto result = ChangeFollower(database, data).follow(mostChanges);
    oneState.commit();
    data.log.generation = LogPlace::unchecked;
    return result == ChangeFollower::Result::UpToDate;
}

} // namespace

IndexLoader::IndexLoader(const DatabaseSettings &settings, int segmentRows)
    : m_settings(settings.patient()), // the whole table takes its time, and can be stopped
      m_segmentRows(segmentRows)
{
}

IndexLoader::~IndexLoader()
{
    m_stop = true;
    if (m_thread.joinable())
        m_thread.join();
}

void IndexLoader::start(std::unique_ptr<IndexData> known)
{
    m_thread = std::thread([this, data = std::move(known)]() mutable { run(std::move(data)); });
}

void IndexLoader::run(std::unique_ptr<IndexData> known)
{
    Loaded loaded = load(std::move(known));
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_loaded = std::move(loaded);
    m_finished.notify_all();
}

IndexLoader::Loaded IndexLoader::load(std::unique_ptr<IndexData> known) const
{
    Loaded loaded;
    const auto started = std::chrono::steady_clock::now();
    try {
        Database database(m_settings);
        if (known && catchUp(database, *known)) {
            loaded.data = std::move(known);
        } else {
            known.reset(); // two of them would need twice the memory
            loaded.data =
                IndexBuilder(database, [this] { return m_stop.load(); }).build(m_segmentRows);
        }
    } catch (const SqlError &error) {
        loaded.problem = error.logText();
        loaded.isPassing = error.isPassing();
        if (known && loaded.isPassing) { // following can be tried again from there
            known->log.generation = LogPlace::unchecked;
            loaded.data = std::move(known);
        }
    } catch (const std::exception &error) {
        loaded.problem = QString::fromUtf8(error.what());
    }
    const std::chrono::duration<double, std::milli> took =
        std::chrono::steady_clock::now() - started;
    loaded.milliseconds = took.count();
    return loaded;
}

std::optional<IndexLoader::Loaded> IndexLoader::take()
{
    std::optional<Loaded> loaded;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        loaded.swap(m_loaded);
    }
    if (loaded)
        m_thread.join();
    return loaded;
}

void IndexLoader::wait()
{
    if (!m_thread.joinable())
        return;
    std::unique_lock<std::mutex> lock(m_mutex);
    m_finished.wait(lock, [this] { return m_loaded.has_value(); });
}

} // namespace KODMS::Services
