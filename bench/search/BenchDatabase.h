// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/RecordContext.h"
#include "services/search/ColumnIndex.h"

#include <QString>

#include <memory>

namespace KODMS::Bench {

/// The database to measure on: generated where the settings say, or what a former run
/// left there.
class BenchDatabase {
public:
    /// Throws SqlError.
    BenchDatabase(const Services::DatabaseSettings &settings, int flows);

    Services::RecordContext &context() { return *m_context; }

    /// Not there until it is loaded; answers then.
    Services::ColumnIndex &index() { return *m_index; }

    int flows() const { return m_flows; }

    double generationSeconds() const { return m_seconds; }

    qint64 bytes();

    bool isServer() { return settings().path.isEmpty(); }

    const Services::DatabaseSettings &settings() { return m_context->database().settings(); }

    /// Writes a flow as it stands, which is a change for whoever follows them.
    void touchFlow(int id);

    /// A user who is no administrator and has as much work as others.
    int ordinaryUser();

    /// Values of one column, spread over the table.
    QStringList someTexts(const QString &table, const QString &column, int count);

private:
    void generate();
    void readAll();
    void warmServer();

    int m_flows;
    double m_seconds = 0;
    std::unique_ptr<Services::RecordContext> m_context;
    std::unique_ptr<Services::ColumnIndex> m_index;
};

} // namespace KODMS::Bench
