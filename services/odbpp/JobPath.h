// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVector>

#include <optional>

namespace KODMS::Services {

/// A file of a job that is read, told by its path. Upper and lower case are one.
struct JobPath {
    enum class Kind { Matrix, Features };

    Kind kind = Kind::Matrix;
    QString root;  ///< the folder of the job that it would belong to
    QString step;  ///< of Features
    QString layer; ///< of Features

    /// Nothing when the path is of no interest. `path` is separated by "/".
    static std::optional<JobPath> of(const QString &path);
};

/// A step's folder, by the path of some file in it.
struct StepPath {
    QString root;
    QString step;

    /// Several when more than one folder of the path is called "steps".
    static QVector<StepPath> allOf(const QString &path);
};

} // namespace KODMS::Services
