// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/copy/RowDigest.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

QByteArray canonicalValue(const QVariant &value)
{
    if (value.isNull())
        return QByteArrayLiteral("-;");
    switch (value.type()) {
    case QVariant::Bool:
    case QVariant::Int:
    case QVariant::UInt:
    case QVariant::LongLong:
    case QVariant::ULongLong:
        return 'i' + QByteArray::number(value.toLongLong()) + ';';
    default:
        break;
    }
    const QByteArray text = value.toString().toUtf8();
    return 't' + QByteArray::number(text.size()) + ':' + text + ';';
}

} // namespace

QByteArray RowDigest::canonical(const QVector<QVariant> &row)
{
    QByteArray bytes;
    for (const QVariant &value : row)
        bytes += canonicalValue(value);
    return bytes + '\n';
}

void RowDigest::add(const QVector<QVariant> &row)
{
    ++m_rows;
    if (m_isSorted)
        m_waiting << canonical(row);
    else
        m_hash.addData(canonical(row));
}

QByteArray RowDigest::sha256()
{
    std::sort(m_waiting.begin(), m_waiting.end());
    for (const QByteArray &row : qAsConst(m_waiting))
        m_hash.addData(row);
    m_waiting.clear();
    return m_hash.result().toHex();
}

} // namespace KODMS::Services
