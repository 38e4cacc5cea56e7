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
QByteArray rawRar4(const RarFiles &files);
QByteArray rawRar5(const RarFiles &files);

} // namespace KODMS::Tests
