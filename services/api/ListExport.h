// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "foundation/model/Odbpp_Flow_View.h"
#include "foundation/model/Odbpp_OrigFile_View.h"
#include "services/api/ShownSearches.h"
#include "services/notices/Outcome.h"

#include <QString>
#include <QVector>

#include <functional>

namespace KODMS::Services {

class Progress;

/// One column of an exported list.
template <typename Record> struct ListColumn {
    QString title;
    int width = 0;                               ///< characters that a spreadsheet shows at once
    bool isNumber = false;                       ///< whole numbers, for spreadsheets to reckon with
    std::function<QString(const Record &)> text; ///< called from another thread
};

using FlowColumn = ListColumn<DataLib::Model::Odbpp_Flow_View>;
using OrigFileColumn = ListColumn<DataLib::Model::Odbpp_OrigFile_View>;

struct ListReceipt {
    int rows = 0;
    int cutCells = 0; ///< so long that a spreadsheet holds only their beginning
};

/// Writes all that a search finds, every page in the search's order, as one state of
/// the records and as far as the signed-in user may see it. GUI thread; long work shows
/// progress and can be cancelled. The file appears, in place of what stood there, only
/// when it is whole; failures and successes are also raised as notices.
class KODMS_SERVICES_API ListExport {
public:
    enum class Format {
        Csv, ///< UTF-8 with its mark; what a spreadsheet would compute has an apostrophe
        Xlsx ///< at most mostSheetRows() rows
    };

    static int mostSheetRows();

    /// With `progress` the caller shows it; without, the service does where there
    /// are windows.
    static Result<ListReceipt> flows(const ShownSearch &search, const QVector<FlowColumn> &columns,
                                     const QString &path, Format format,
                                     Progress *progress = nullptr);
    static Result<ListReceipt> origFiles(const ShownSearch &search,
                                         const QVector<OrigFileColumn> &columns,
                                         const QString &path, Format format,
                                         Progress *progress = nullptr);
};

} // namespace KODMS::Services
