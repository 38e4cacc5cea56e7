// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/RowReader.h"

#include <QHash>

#include <algorithm>

namespace KODMS::Services {

bool RowReader::readAt(const QString &moment, const QVector<int> &ids, const Take &take)
{
    for (int start = 0; start < ids.size(); start += chunkSize) {
        if (!readSome(moment, ids, start, take))
            return false;
    }
    return true;
}

bool RowReader::readSome(const QString &moment, const QVector<int> &ids, int start,
                         const Take &take)
{
    const int end = std::min(start + chunkSize, static_cast<int>(ids.size()));
    SqlQuery query = m_database.query(m_statement);
    QHash<int, int> places;
    for (int i = 0; i < chunkSize; ++i) {
        const int place = std::min(start + i, end - 1); // the last one fills the rest
        query.bind(i, ids.at(place));
        places.insert(ids.at(place), place);
    }
    query.exec();
    bool isThen = moment.isEmpty();
    while (query.next()) {
        isThen = isThen || query.text("moment") == moment; // the first row speaks for all
        if (!isThen)
            return false;
        take(places.value(query.number("row_id")), query);
    }
    return isThen; // of rows that are all gone, none says so
}

} // namespace KODMS::Services
