// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/odbpp/JobFile.h"
#include "services/odbpp/JobPath.h"
#include "services/odbpp/OdbJob.h"

#include <QHash>
#include <QSet>
#include <QVector>

#include <memory>

namespace KODMS::Services {

/// Puts a job together from its files, which come in any order and one after the
/// other: the matrix may follow the layers that it names. Holds a few numbers a
/// layer and never a file.
class JobScan {
public:
    explicit JobScan(const LimitSettings &limits);
    ~JobScan();
    JobScan(const JobScan &) = delete;
    JobScan &operator=(const JobScan &) = delete;

    /// True when the content of this file is to be handed over.
    static bool wants(const QString &path) { return JobPath::of(path).has_value(); }

    /// The next file; `path` is separated by "/". What is wrong with its content is
    /// kept until the end, when it is known whether the file belongs to the job.
    Outcome begin(const QString &path);
    void data(const char *bytes, qint64 size);
    void end();

    /// A file whose content is not wanted: its size.
    void skip(qint64 bytes) { m_bytes += bytes; }

    /// A file with the content of an earlier one.
    Outcome copy(const QString &from, const QString &to);

    /// `ownName` is the job's name when its files stand in no folder.
    Result<OdbJob> finish(const QString &ownName) const;

private:
    struct Matrix;
    struct Layer;

    Outcome note(const QString &path);
    Outcome add(const JobPath &place, const QString &path);
    Result<QString> chooseRoot() const;
    Outcome requireSteps(const Matrix &matrix, const QString &root) const;
    Result<qint64> sumOf(const Matrix &matrix, const QString &root) const;

    LimitSettings m_limits;
    std::vector<std::unique_ptr<Matrix>> m_matrices;
    std::vector<std::unique_ptr<Layer>> m_layers;
    QHash<QString, QSet<QString>> m_steps; ///< seen, by root
    int m_stepCount = 0;
    QHash<QString, const Layer *> m_byPath; ///< for copies

    // Of the present file.
    std::unique_ptr<JobFile> m_file;
    Outcome *m_outcome = nullptr;
    qint64 m_files = 0;
    qint64 m_bytes = 0;
};

} // namespace KODMS::Services
