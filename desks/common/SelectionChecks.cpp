// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/SelectionChecks.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/DownloadRights.h"
#include "desks/common/MessageBoxes.h"
#include "desks/common/TableHelpers.h"
#include "foundation/ui/DMS_StdCommon.h"
#include "foundation/ui/DMS_UICommon.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

constexpr char NoRight[] = "以下项你没有下载权限：";

bool isTgz(const QTableWidget *table, int row, const DeskOperations &its)
{
    const QString type = cellText(table, row, its.fileTypeColumn);
    return (its.foldsTypeCase ? type.toLower() : type) == QLatin1String("tgz");
}

bool mayHaveAnything(const DeskOperations &its)
{
    return its.updatersMayGetAny ? mayChangeFiles() : DMS_UICommon::interface()->hasAdminRole();
}

bool isOwnedByUser(const QTableWidget *table, int row, const DeskOperations &its)
{
    return cellText(table, row, its.ownerColumn).toInt() ==
           DMS_StdCommon::interface()->getCurrentUser().id;
}

} // namespace

bool selectionIsOneKind(const QTableWidget *table, const DeskOperations &its)
{
    QStringList tgzNames;
    QStringList otherNames;
    const int blocks = table->selectedRanges().size();
    // Cells picked here and there in few rows are more blocks than there are rows.
    for (int row = 0; row < qMin(blocks, table->rowCount()); ++row) {
        QStringList &names = isTgz(table, row, its) ? tgzNames : otherNames;
        const QString name = cellText(table, row, its.keyColumn);
        if (!names.contains(name))
            names.append(name);
    }
    return tgzNames.isEmpty() ? otherNames.size() < 2 : otherNames.isEmpty();
}

bool userMayHaveSelection(QWidget *desk, const QTableWidget *table, const DeskOperations &its)
{
    if (mayHaveAnything(its))
        return true;
    for (int row = 0; row < table->rowCount(); ++row) {
        if (!isCellSelected(table, row, its.keyColumn) || isOwnedByUser(table, row, its))
            continue;
        inform(desk, QString::fromUtf8(NoRight) + cellText(table, row, its.keyColumn));
        return false;
    }
    return true;
}

bool findJobFile(const QString &folder, QString &fileName)
{
    const QFileInfoList entries = QDir(folder).entryInfoList();
    for (const QFileInfo &entry : entries) {
        if (entry.isDir()) // "." and ".." too
            continue;
        fileName = entry.fileName();
        const QString name = fileName.toLower();
        if (name.contains(QLatin1String(".tgz")) || name.contains(QLatin1String(".tar")))
            return true;
    }
    return false;
}

} // namespace KODMS::UI
