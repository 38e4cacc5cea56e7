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
    QByteArray packed = {};     ///< what stands for the content, if it is not stored
    QByteArray localName = {};  ///< before the content, if not the name of the directory
    int offset = -1;            ///< where the directory says that it is
};

struct RawZipOptions {
    bool useLongEnd = false; ///< the zip64 form of the directory's end
    int repeatDirectory = 1; ///< the directory names each entry so often
    bool cutDirectory = false;
    bool renameRepeats = false; ///< each time under another name
    qint64 declaredCount = -1;  ///< of entries, in the zip64 form
};

/// A zip file of stored entries, or of entries packed by the caller.
QByteArray rawZip(const QVector<RawZipEntry> &entries, const RawZipOptions &options = {});

} // namespace KODMS::Tests
