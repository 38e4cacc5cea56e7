// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/IndexDictionaries.h"
#include "services/search/IndexLayout.h"
#include "services/search/IndexTable.h"
#include "services/search/LogPlace.h"

namespace KODMS::Services {

/// The searched fields of both views, as they were at one moment.
struct IndexData {
    explicit IndexData(int segmentRows = RowBits::mostRows)
        : flows(IndexLayout::flows().numbers.size(), IndexLayout::flows().texts.size(),
                segmentRows),
          origFiles(IndexLayout::origFiles().numbers.size(), IndexLayout::origFiles().texts.size(),
                    segmentRows)
    {
    }

    IndexTable &tableOf(const IndexLayout &layout)
    {
        return &layout == &IndexLayout::flows() ? flows : origFiles;
    }

    std::size_t bytes() const { return dictionaries.bytes() + flows.bytes() + origFiles.bytes(); }

    IndexDictionaries dictionaries;
    IndexTable flows;
    IndexTable origFiles;
    LogPlace log; ///< what of it is in here
};

} // namespace KODMS::Services
