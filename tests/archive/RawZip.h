// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

namespace KODMS::Tests {

quint32 crc32Of(const QByteArray &bytes);

/// One entry of a zip file of which every field can be a lie.
struct RawZipEntry {
    QByteArray name;
    QByteArray content;
    bool isMarkedUtf8 = false;
    bool isEncrypted = false;
    bool hasWrongCrc = false;
    int method = 0;             ///< 0 = stored
    quint32 unixMode = 0100644; ///< file, folder, link or device
    int declaredSize = -1;      ///< instead of the content's
};

struct RawZipOptions {
    bool useLongEnd = false; ///< the zip64 form of the directory's end
    int repeatDirectory = 1; ///< the directory names each entry so often
    bool cutDirectory = false;
};

/// A zip file of stored entries.
QByteArray rawZip(const QVector<RawZipEntry> &entries, const RawZipOptions &options = {});

} // namespace KODMS::Tests
