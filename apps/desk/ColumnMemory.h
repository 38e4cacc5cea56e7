// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

class QHeaderView;

namespace KODMS::Host {

/// Widths and order of a table's columns as a small text that outlives changes of
/// the table: a column is known by its header text, not by its number, so that a
/// new or vanished column disturbs only itself.
struct ColumnMemory {
    /// The present state of the columns.
    static QByteArray save(const QHeaderView &header);

    /// Puts known columns into their remembered order and width; others stay beside
    /// the neighbour that they have. Returns false, with the header unchanged, when
    /// `text` is not such a memory.
    static bool restore(QHeaderView &header, const QByteArray &text);

    /// The lasting name of a column: header text, with a number when it repeats.
    static QString columnId(const QHeaderView &header, int logicalIndex);
};

} // namespace KODMS::Host
