// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QObject>

namespace KODMS::Tests {

/// A look at how many receivers a signal of any object has.
class Receivers : public QObject {
public:
    static int of(const QObject *sender, const QByteArray &signal)
    {
        const auto count = &Receivers::receivers;
        return (sender->*count)(QByteArray(QByteArray::number(QSIGNAL_CODE) + signal).constData());
    }
};

/// Signatures as string-based connections spell them.
inline QByteArray asSlot(const QByteArray &signature)
{
    return QByteArray::number(QSLOT_CODE) + signature;
}

inline QByteArray asSignal(const QByteArray &signature)
{
    return QByteArray::number(QSIGNAL_CODE) + signature;
}

} // namespace KODMS::Tests
