// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

namespace KODMS::Tests {

/// One entry of a tar file. `type` is the header's letter: '0' file, '1' hard
/// link, '2' symbolic link, '3' and '4' devices, '5' folder, '6' pipe; 'x' holds
/// attributes of the next entry, 'K' and 'L' the names of its link and of itself.
struct RawTarEntry {
    QByteArray name;
    QByteArray content;
    char type = '0';
    QByteArray link = {};
    QByteArray sizeField = {}; ///< instead of the content's size
};

QByteArray rawTar(const QVector<RawTarEntry> &entries);

} // namespace KODMS::Tests
