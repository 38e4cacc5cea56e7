// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <QVector>

#include <random>

namespace KODMS::Tests {

/// Damages archives at random and unpacks what comes of it. The same seed gives the
/// same archives.
class MutationRun {
public:
    explicit MutationRun(quint32 seed);

    /// Empty when all went well; else what did not, with the number of the mutation.
    QString run(int mutations);

    int refused() const { return m_refused; }

    int unpacked() const { return m_unpacked; }

    /// CPU seconds of the one that took longest.
    double slowest() const { return m_slowest; }

private:
    QByteArray mutated();
    void changeOnce(QByteArray &bytes);
    QString tryOne(const QByteArray &archive);
    QString leftovers() const;
    int below(int limit);

    std::mt19937 m_random;
    QVector<QByteArray> m_archives;
    QTemporaryDir m_dir;
    int m_refused = 0;
    int m_unpacked = 0;
    double m_slowest = 0;
};

} // namespace KODMS::Tests
