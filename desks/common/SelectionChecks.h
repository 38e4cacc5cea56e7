// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QTableWidget;
class QWidget;

namespace KODMS::UI {

struct DeskOperations;

// What both desks check before they work on the selected rows.

/// Whether what is selected may be downloaded together: any number of tgz
/// archives, or one job of another kind, or nothing. A selected block stands for
/// the row whose number is the block's place among the blocks, not for the rows
/// that it covers.
bool selectionIsOneKind(const QTableWidget *table, const DeskOperations &its);

/// Whether the signed-in user is recorded on every selected row, or need not be.
/// If not, the first row that says so is named in a message box of the desk.
bool userMayHaveSelection(QWidget *desk, const QTableWidget *table, const DeskOperations &its);

/// Whether the folder itself holds a tgz or tar archive. `fileName` becomes the
/// name of the first one, else of the last file there; without files it stays.
bool findJobFile(const QString &folder, QString &fileName);

} // namespace KODMS::UI
