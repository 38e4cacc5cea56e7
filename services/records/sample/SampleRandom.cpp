// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/sample/SampleRandom.h"

namespace KODMS::Services {

quint64 SampleRandom::next()
{
    // A counter, mixed until every bit depends on every bit.
    m_state += 0x9E3779B97F4A7C15ULL;
    quint64 mixed = m_state;
    mixed = (mixed ^ (mixed >> 32)) * 0xD6E8FEB86659FD93ULL;
    mixed = (mixed ^ (mixed >> 32)) * 0xD6E8FEB86659FD93ULL;
    return mixed ^ (mixed >> 32);
}

QString SampleRandom::guid(qint64 millisecondsSinceEpoch)
{
    constexpr int timeDigits = 12;
    constexpr int digits = 32;
    constexpr char hex[] = "0123456789abcdef";
    QString text(digits, Qt::Uninitialized);
    auto time = static_cast<quint64>(millisecondsSinceEpoch);
    for (int i = timeDigits - 1; i >= 0; --i, time >>= 4)
        text[i] = QLatin1Char(hex[time & 15U]);
    quint64 bits = 0;
    for (int i = timeDigits; i < digits; ++i, bits >>= 4) {
        if ((i - timeDigits) % 16 == 0)
            bits = next();
        text[i] = QLatin1Char(hex[bits & 15U]);
    }
    return text;
}

} // namespace KODMS::Services
