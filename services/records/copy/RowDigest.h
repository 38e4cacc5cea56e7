// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QVariant>
#include <QVector>

namespace KODMS::Services {

/// A sum over rows that does not depend on the engine that they came from: of each value
/// its kind (nothing, number, text), and the number in decimal digits or the text in UTF-8
/// with its length.
class RowDigest {
public:
    /// `sorted`: the rows come in an order of the engine's own, and are put into that of
    /// their bytes first.
    explicit RowDigest(bool sorted) : m_isSorted(sorted) {}

    void add(const QVector<QVariant> &row);

    qint64 rows() const { return m_rows; }

    /// 64 hexadecimal digits. Once, after the last row.
    QByteArray sha256();

    static QByteArray canonical(const QVector<QVariant> &row);

private:
    bool m_isSorted;
    qint64 m_rows = 0;
    QVector<QByteArray> m_waiting;
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
};

} // namespace KODMS::Services
