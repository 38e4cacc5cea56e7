// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/RowReader.h"

#include <QHash>

#include <algorithm>

namespace KODMS::Services {

void RowReader::read(const QVector<int> &ids,
                     const std::function<void(int, const SqlQuery &)> &take)
{
    for (int start = 0; start < ids.size(); start += chunkSize) {
        const int end = std::min(start + chunkSize, static_cast<int>(ids.size()));
        SqlQuery query = m_database.query(m_statement);
        QHash<int, int> places;
        for (int i = 0; i < chunkSize; ++i) {
            const int place = std::min(start + i, end - 1); // the last one fills the rest
            query.bind(i, ids.at(place));
            places.insert(ids.at(place), place);
        }
        query.exec();
        while (query.next())
            take(places.value(query.number("row_id")), query);
    }
}

} // namespace KODMS::Services
