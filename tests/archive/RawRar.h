// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QPair>
#include <QVector>

namespace KODMS::Tests {

using RarFiles = QVector<QPair<QByteArray, QByteArray>>;

/// RAR archives with their files stored as they are: the form of version 4 and the
/// one of version 5.
QByteArray rawRar4(const RarFiles &files, quint32 archiveFlags = 0, quint32 fileFlags = 0);
QByteArray rawRar5(const RarFiles &files);

constexpr quint32 Rar4HeadersEncrypted = 0x0080; ///< of the archive
constexpr quint32 Rar4FileEncrypted = 0x0004;
constexpr quint32 Rar4FileSolid = 0x0010;

/// One whose headers are encrypted: nothing can be read of it.
QByteArray encryptedRar5();

} // namespace KODMS::Tests
