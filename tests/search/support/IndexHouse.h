// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/ColumnIndex.h"
#include "tests/records/support/ViewFixture.h"

#include <memory>

namespace KODMS::Tests {

/// Records of 120 flows of two people, and an index of them behind the view services.
class IndexHouse : public ViewFixture {
public:
    static constexpr int flows = 120;

    static Services::ColumnIndex::Options options(int smallestTable = 0);

    IndexHouse();

    Services::ColumnIndex &index() { return *m_index; }

    /// Another index, of these records or of others.
    void renewIndex(const Services::ColumnIndex::Options &options = IndexHouse::options());
    void renewIndex(const Services::ColumnIndex::Options &options,
                    const Services::DatabaseSettings &settings);
    /// The statements alone answer from now on.
    void removeIndex();

    /// Reads everything, and fails the test when the index is not there afterwards.
    void load();

    bool isReady() const;

    /// Jobs whose name contains the text, counted; -1 when that failed.
    int jobs(const std::string &part);

    /// Searches take longer then, which whoever looks after the installation should know.
    static void expectWarning(const QString &why = {});

private:
    std::unique_ptr<Services::ColumnIndex> m_index;
};

} // namespace KODMS::Tests
