// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

namespace KODMS::Services {

/// Numbers that look random and are the same for the same seed on every computer.
class SampleRandom {
public:
    explicit SampleRandom(quint32 seed) : m_state(seed * 0x9E3779B97F4A7C15ULL + 1) {}

    quint64 next();

    /// 0 to limit - 1.
    int below(int limit) { return static_cast<int>(next() % static_cast<quint64>(limit)); }

    bool percent(int chance) { return below(100) < chance; }

    const QString &oneOf(const QStringList &list) { return list.at(below(list.size())); }

    /// 32 hexadecimal digits that begin with the time, so that later ones are larger.
    QString guid(qint64 millisecondsSinceEpoch);

private:
    quint64 m_state;
};

} // namespace KODMS::Services
