// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <vector>

namespace KODMS::Bench {

/// A sample installation with many flows, running, to measure a desk on. Throws
/// std::runtime_error when something fails.
class BenchInstallation {
public:
    /// `folder` is made when it is missing and used as it is when it is there;
    /// empty: a temporary one. `flows` are generated into a new one.
    BenchInstallation(const QString &folder, int flows);
    ~BenchInstallation();

    BenchInstallation(const BenchInstallation &) = delete;
    BenchInstallation &operator=(const BenchInstallation &) = delete;

    /// Signs in the account of the sample installation with this login name.
    void signIn(const QString &loginName) const;

    int flows() const { return m_flows; }

    QString configPath() const;

    /// What people look for: parts of job names that exist, of `length` letters,
    /// all different, spread over the whole installation.
    QStringList jobNameTerms(int count, int length) const;

    /// First two characters of executors' names.
    QStringList executorTerms(int count) const;

private:
    void generate(int flows) const;

    QTemporaryDir m_dir;
    QString m_folder;
    int m_flows = 0;
};

} // namespace KODMS::Bench
