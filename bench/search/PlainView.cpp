// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/PlainView.h"

#include "services/records/ViewScope.h"

#include <utility>

namespace KODMS::Bench {

using namespace Services;

PlainView::PlainView(Database &database, const SearchCase &searchCase)
    : m_database(database), m_case(searchCase)
{
}

QString PlainView::scope() const
{
    const ViewScope scope = m_case.isFlowView ? ViewScope::ofFlowView(m_case.actor)
                                              : ViewScope::ofOrigFileView(m_case.actor);
    if (scope.isEverything)
        return {};
    QStringList ties;
    for (const QString &field : scope.fields)
        ties << field + QStringLiteral(" = ") + QString::number(m_case.actor.userId);
    return QStringLiteral(" AND (") + ties.join(QStringLiteral(" OR ")) + QLatin1Char(')');
}

QString PlainView::where(const List &list)
{
    m_values.clear();
    QString text;
    for (std::size_t i = 0; i + 1 < list.size(); ++i) { // the last one only carries the order
        const auto &record = list[i];
        if (i > 0)
            text += record.orWithPrevious == 1 ? QStringLiteral(" OR ") : QStringLiteral(" AND ");
        if (record.openBracket == 1)
            text += QLatin1Char('(');
        const QString value = QString::fromStdString(record.value);
        const QString field = QString::fromStdString(record.fieldName);
        const bool isServer = m_database.settings().path.isEmpty();
        text +=
            isServer && record.fuzzy == 1 ? QStringLiteral("CAST(%1 AS TEXT)").arg(field) : field;
        if (record.fuzzy == 1) {
            text += isServer ? QStringLiteral(" ILIKE ?") : QStringLiteral(" LIKE ?");
            m_values << QString(QLatin1Char('%') + value + QLatin1Char('%'));
        } else {
            text += QStringLiteral(" = ?");
            m_values << value.toInt();
        }
        if (record.closeBracket == 2)
            text += QLatin1Char(')');
    }
    return QLatin1Char('(') + text + QLatin1Char(')') + scope();
}

std::pair<int, int> PlainView::run(const List &list)
{
    const QString from = (m_case.isFlowView ? QStringLiteral(" FROM flow_view WHERE ")
                                            : QStringLiteral(" FROM orig_file_view WHERE ")) +
                         where(list);
    const QString order =
        m_case.isFlowView ? QStringLiteral(" ORDER BY Flow_CreateTime DESC, Flow_Id DESC")
                          : QStringLiteral(" ORDER BY FlowTable_CreateTime DESC, OrigFile_Id DESC");
    int rows = 0;
    {
        SqlQuery query = m_database.prepare(QStringLiteral("SELECT *") + from + order +
                                            QStringLiteral(" LIMIT 30 OFFSET ") +
                                            QString::number(m_case.pageStart));
        for (int i = 0; i < m_values.size(); ++i)
            query.bind(i, m_values.at(i));
        query.exec();
        while (query.next())
            ++rows;
    }
    SqlQuery query = m_database.prepare(QStringLiteral("SELECT count(*) AS total") + from);
    for (int i = 0; i < m_values.size(); ++i)
        query.bind(i, m_values.at(i));
    query.exec().next();
    return {rows, query.number("total")};
}

} // namespace KODMS::Bench
