// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/FileHandle.h"
#include "services/tables/TableWriter.h"

#include <QByteArray>

namespace KODMS::Services {

/// Comma-separated lines in UTF-8, with the mark in front by which spreadsheets know
/// it, and CR LF between the lines.
class CsvFile final : public TableWriter {
public:
    /// `file` is empty and outlives this.
    explicit CsvFile(FileHandle &file) : m_file(file) {}

    Outcome begin(const QVector<TableColumn> &columns) override;
    Outcome addRow(const QStringList &cells) override;
    Outcome finish() override;

private:
    Outcome writeOut();

    FileHandle &m_file;
    QByteArray m_waiting;
};

} // namespace KODMS::Services
