// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/RecordContext.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace KODMS::Bench {

/// The database to measure on: generated in a temporary folder, or one that a
/// former run left at a path of the caller's choice.
class BenchDatabase {
public:
    /// Throws SqlError. `path` empty: temporary.
    BenchDatabase(const QString &path, int flows);

    Services::RecordContext &context() { return *m_context; }

    int flows() const { return m_flows; }

    double generationSeconds() const { return m_seconds; }

    qint64 fileSize() const;

    /// A user who is no administrator and has as much work as others.
    int ordinaryUser();

    /// Values of one column, spread over the table.
    QStringList someTexts(const QString &table, const QString &column, int count);

private:
    void generate();

    QTemporaryDir m_dir;
    QString m_path;
    int m_flows;
    double m_seconds = 0;
    std::unique_ptr<Services::RecordContext> m_context;
};

} // namespace KODMS::Bench
