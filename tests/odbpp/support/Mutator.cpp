// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/odbpp/support/Mutator.h"

namespace KODMS::Tests {

int Mutator::below(int limit)
{
    return limit < 2 ? 0 : static_cast<int>(m_random() % static_cast<unsigned>(limit));
}

QByteArray Mutator::word()
{
    static const QVector<QByteArray> words{"\n",
                                           "\r\n",
                                           " ",
                                           ";",
                                           "#",
                                           "{",
                                           "}",
                                           "=",
                                           "-1",
                                           "1e999",
                                           "-0",
                                           "nan",
                                           "99999999999999",
                                           "OB 1 1 I\n",
                                           "OE\n",
                                           "SE\n",
                                           "S P 0\n",
                                           "P 1 1 0 P 0 0\n",
                                           "F 3\n",
                                           "LAYER {\n",
                                           "NAME=",
                                           "STEP {\n}\n",
                                           QByteArray("\0", 1),
                                           "\xff\xfe",
                                           "\xe9\xa1\xb6",
                                           "\x1f\x9d\x90",
                                           "\x1f\x8b\x08",
                                           QByteArray(3000, 'x'),
                                           "../",
                                           "\xb6\xa5"};
    return words[below(words.size())];
}

void Mutator::mutate(QByteArray &bytes)
{
    const int at = below(bytes.size());
    const int length = 1 + below(qMin(64, bytes.size()));
    switch (below(8)) {
    case 0:
    case 1:
        if (!bytes.isEmpty())
            bytes[at] = static_cast<char>(bytes[at] ^ (1 << below(8)));
        break;
    case 2:
        bytes.remove(at, length);
        break;
    case 3:
        bytes.insert(at, bytes.mid(at, length));
        break;
    case 4:
        bytes.truncate(at);
        break;
    case 5:
        bytes.replace(at, below(8), word());
        break;
    case 6:
        bytes.insert(at, word());
        break;
    default: {
        const QByteArray &other = m_seeds[below(m_seeds.size())];
        bytes = bytes.left(at) + other.mid(below(other.size()));
    }
    }
}

QByteArray Mutator::next()
{
    QByteArray bytes = m_seeds[below(m_seeds.size())];
    for (int i = 1 + below(6); i > 0; --i)
        mutate(bytes);
    return bytes;
}

} // namespace KODMS::Tests
