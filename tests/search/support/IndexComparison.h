// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/RecordContext.h"
#include "services/records/conditions/SearchView.h"
#include "services/search/ColumnIndex.h"
#include "tests/records/support/SearchOracle.h"

namespace KODMS::Tests {

/// Asks the index and the statements the same, in one state of the database.
class IndexComparison {
public:
    IndexComparison(Services::RecordContext &context, Services::ColumnIndex &index,
                    SearchOracle::View view);

    /// Empty when both agree; else what differs. Reads the index first, where it is gone.
    QString difference(const SearchOracle::List &conditions, const SearchOracle::List &counted);

    /// Of the statements, to the last question.
    const SearchOracle::Answer &answer() const { return m_answer; }

    /// Questions that the index has answered itself.
    int answered() const { return m_answered; }

    /// Questions that it has answered outside of a transaction, of the very moment that the
    /// statements were asked of.
    int answeredOutside() const { return m_answeredOutside; }

    /// The fields of the view that the index holds, and those that it can order by.
    static QStringList fields(SearchOracle::View view);
    static QStringList orders(SearchOracle::View view);

private:
    class Watched;

    SearchOracle::Answer ask(Services::ViewIndex *index, const SearchOracle::List &conditions,
                             const SearchOracle::List &counted);

    QString momentNow();
    static QString difference(const SearchOracle::Answer &found,
                              const SearchOracle::Answer &expected);

    Services::RecordContext &m_context;
    Services::ColumnIndex &m_index;
    const Services::SearchView &m_view;
    SearchOracle::Answer m_answer;
    int m_answered = 0;
    int m_answeredOutside = 0;
};

/// A list as a text, for the message of a test.
QString describe(const SearchOracle::List &list);

} // namespace KODMS::Tests
