// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTemporaryDir>

namespace KODMS::Tests {

/// What customers send and what executors make of it, on this machine's disk.
class CustomerFiles {
public:
    using Files = QMap<QString, QByteArray>; ///< by path inside

    /// The drawings of a board, with Chinese names.
    static Files drawings();

    /// The path of a folder with these files.
    QString folder(const QString &name, const Files &files) const;

    /// The path of a tar archive, packed by gzip, with these files: "board.tgz".
    QString archive(const QString &name, const Files &files) const;

    /// The path of an archive with an ODB++ job of so many signal layers, each of three
    /// features.
    QString preparedJob(const QString &name, int signalLayers) const;

    /// The files below a folder, without the folders themselves.
    static Files filesIn(const QString &folder);

private:
    QTemporaryDir m_dir;
};

} // namespace KODMS::Tests
