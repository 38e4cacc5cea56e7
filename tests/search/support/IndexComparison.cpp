// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/search/support/IndexComparison.h"

#include "services/records/Database.h"
#include "services/records/Dialect.h"
#include "services/records/Transaction.h"
#include "services/records/conditions/ViewSearch.h"
#include "services/search/IndexLayout.h"

namespace KODMS::Tests {

using namespace Services;

/// Counts what the index answers.
class IndexComparison::Watched final : public ViewIndex {
public:
    Watched(ViewIndex &index, int &answered) : m_index(index), m_answered(answered) {}

    bool isReady() override { return m_index.isReady(); }

    std::optional<Answer> find(Database &database, const SearchView &view,
                               const SearchRequest &request, const Condition &countWhere) override
    {
        auto answer = m_index.find(database, view, request, countWhere);
        m_answered += answer ? 1 : 0;
        return answer;
    }

private:
    ViewIndex &m_index;
    int &m_answered;
};

namespace {

const SearchView &viewOf(SearchOracle::View view)
{
    return view == SearchOracle::View::Flow ? SearchView::flows() : SearchView::origFiles();
}

QString numbersOf(const QVector<int> &ids)
{
    QStringList texts;
    for (const int id : ids)
        texts << QString::number(id);
    return texts.join(QLatin1Char(' '));
}

} // namespace

QString describe(const SearchOracle::List &list)
{
    QString text;
    for (const auto &record : list)
        text += QStringLiteral("%1 open %2 %3 fuzzy %4 '%5' close %6 numeric %7 sort %8 %9")
                    .arg(record.orWithPrevious)
                    .arg(record.openBracket)
                    .arg(QString::fromStdString(record.fieldName))
                    .arg(record.fuzzy)
                    .arg(QString::fromStdString(record.value))
                    .arg(record.closeBracket)
                    .arg(record.numericValue)
                    .arg(record.sortEnabled)
                    .arg(QString::fromStdString(record.sortField)) +
                QStringLiteral(" %1 page %2 %3 %4\n")
                    .arg(record.sortDirection)
                    .arg(record.pageEnabled)
                    .arg(QString::fromStdString(record.pageStart),
                         QString::fromStdString(record.pageSize));
    return text;
}

IndexComparison::IndexComparison(RecordContext &context, ColumnIndex &index,
                                 SearchOracle::View view)
    : m_context(context), m_index(index), m_view(viewOf(view))
{
}

QStringList IndexComparison::fields(SearchOracle::View view)
{
    QStringList names;
    for (const IndexLayout::Field &field : IndexLayout::of(viewOf(view)).fields)
        names << QLatin1String(field.name);
    return names;
}

QStringList IndexComparison::orders(SearchOracle::View view)
{
    const IndexLayout &layout = IndexLayout::of(viewOf(view));
    return {QLatin1String(layout.orderField), QLatin1String(layout.fields.front().name)};
}

SearchOracle::Answer IndexComparison::ask(ViewIndex *index, const SearchOracle::List &conditions,
                                          const SearchOracle::List &counted)
{
    m_context.setViewIndex(index);
    ViewSearch search(m_context, m_view);
    const bool ok = search.run(conditions, counted);
    m_context.setViewIndex(nullptr);
    if (!ok)
        qFatal("%s", qPrintable(search.problem() + QLatin1Char('\n') + describe(conditions)));
    return {search.ids(), search.totalCount()};
}

QString IndexComparison::difference(const SearchOracle::List &conditions,
                                    const SearchOracle::List &counted)
{
    m_index.load();
    m_context.setViewIndex(&m_index);
    ViewSearch outside(m_context, m_view);
    const bool isAnswered = outside.runByIndex(conditions, counted);
    Watched watched(m_index, m_answered);
    Transaction oneState(m_context.database(), Transaction::Purpose::Read);
    const bool isThen = isAnswered && outside.moment() == momentNow();
    const SearchOracle::Answer found = ask(&watched, conditions, counted);
    m_answer = ask(nullptr, conditions, counted);
    oneState.commit();
    QString differs = difference(found, m_answer);
    if (isThen && !outside.moment().isEmpty()) {
        ++m_answeredOutside;
        differs += difference({outside.ids(), outside.totalCount()}, m_answer);
    }
    return differs.isEmpty() ? differs : differs + describe(conditions);
}

QString IndexComparison::momentNow()
{
    if (!m_context.database().dialect().tellsMoments())
        return {};
    SqlQuery query = m_context.database().prepare(
        QStringLiteral("SELECT CAST(pg_current_snapshot() AS TEXT) AS moment"));
    query.exec().next();
    return query.text("moment");
}

QString IndexComparison::difference(const SearchOracle::Answer &found,
                                    const SearchOracle::Answer &expected)
{
    if (found.ids == expected.ids && found.count == expected.count)
        return {};
    return QStringLiteral("the index finds %1 (%2), the statements %3 (%4)\n")
        .arg(found.count)
        .arg(numbersOf(found.ids))
        .arg(expected.count)
        .arg(numbersOf(expected.ids));
}

} // namespace KODMS::Tests
