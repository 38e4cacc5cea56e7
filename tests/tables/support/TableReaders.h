// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

namespace KODMS::Tests {

/// The cells of a table file, titles first; `problem` says why it cannot be read.
struct ReadTable {
    QVector<QStringList> rows;
    QString problem;
    int frozenRows = 0;       ///< of a sheet: they stay in sight
    QMap<int, double> widths; ///< of a sheet's columns that have one of their own
};

/// By the rules of RFC 4180 to the letter: the mark, CR LF after every line.
ReadTable readCsv(const QString &path);

/// The first sheet of a workbook. A number begins with '#'.
ReadTable readSheet(const QString &path);

} // namespace KODMS::Tests
