// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

#include <random>

namespace KODMS::Tests {

/// Makes damaged copies of good files: flipped, cut, doubled, spliced, and with words
/// that a reader may stumble over.
class Mutator {
public:
    Mutator(QVector<QByteArray> seeds, quint32 seed) : m_seeds(std::move(seeds)), m_random(seed) {}

    QByteArray next();
    int below(int limit);

private:
    void mutate(QByteArray &bytes);
    QByteArray word();

    QVector<QByteArray> m_seeds;
    std::mt19937 m_random;
};

} // namespace KODMS::Tests
