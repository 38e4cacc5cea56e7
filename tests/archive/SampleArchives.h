// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace KODMS::Tests {

QByteArray gzipped(const QByteArray &bytes);

/// A 7z archive of these files, by UTF-8 path.
QByteArray sevenZip(const QMap<QString, QByteArray> &files);

bool writeFile(const QString &path, const QByteArray &bytes);

/// Every file, link and folder below `folder`, hidden ones too: path to content
/// ("/" for folders, "->" and the target for links).
QMap<QString, QByteArray> treeOf(const QString &folder);

} // namespace KODMS::Tests
