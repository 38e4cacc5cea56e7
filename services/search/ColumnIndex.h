// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/ViewIndex.h"
#include "services/search/IndexLoader.h"
#include "services/search/IndexStatus.h"

#include <QString>

#include <chrono>

namespace KODMS::Services {

/// The searched fields of both views in memory. Read in the background from the first
/// search on; from then on brought up to date before each answer. In the thread of the
/// records.
class ColumnIndex final : public ViewIndex {
public:
    /// So many changes are read while somebody waits for the answer.
    static constexpr int mostChanges = 2000;

    struct Options {
        int smallestTable = 2000; ///< with fewer flows the statements are as fast
        int segmentRows = RowBits::mostRows;
        int mostRefusals = 3; ///< so often what was read and never asked is read again at once
    };

    explicit ColumnIndex(const DatabaseSettings &settings) : ColumnIndex(settings, Options()) {}

    ColumnIndex(const DatabaseSettings &settings, const Options &options);

    bool isReady() override;

    std::optional<Answer> find(Database &database, const SearchView &view,
                               const SearchRequest &request, const Condition &countWhere) override;

    /// Uses what has been read in the background from now on, if it is there. A search does
    /// so by itself.
    void takeLoaded();

    IndexStatus status() const;

    /// Reads everything now, unless it is there, and waits for it.
    void load();

private:
    bool isFresh(Database &database);
    void fail(const QString &why, bool isPassing = false);
    void startLoading(std::unique_ptr<IndexData> known = nullptr);
    void refuse(std::unique_ptr<IndexData> known);
    bool isWaiting() const;
    bool isWorthIt(Database &database) const;
    bool follow(Database &database);
    std::optional<Answer> search(const SearchView &view, const SearchRequest &request,
                                 const Condition &countWhere);

    Options m_options;
    IndexLoader m_loader;
    std::unique_ptr<IndexData> m_data; ///< null: not there
    double m_loadMilliseconds = 0;
    int m_refusals = 0; ///< of what was just read, one after the other
    bool m_hasFailed = false;
    QString m_failure;                               ///< what was logged, until it works again
    std::chrono::steady_clock::time_point m_nextTry; ///< after a failure
};

} // namespace KODMS::Services
