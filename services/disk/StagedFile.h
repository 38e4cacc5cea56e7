// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFile>
#include <QString>

#include <utility>

namespace KODMS::Services {

/// A file that is needed only while this object lives, and is removed with it, however it
/// ends; also when it was never made.
class StagedFile {
public:
    explicit StagedFile(QString path) : m_path(std::move(path)) {}

    ~StagedFile() { QFile::remove(m_path); }

    StagedFile(const StagedFile &) = delete;
    StagedFile &operator=(const StagedFile &) = delete;

    const QString &path() const { return m_path; }

private:
    QString m_path;
};

} // namespace KODMS::Services
