// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDir>
#include <QString>

namespace KODMS::Bench {

/// Runs a command line of the shell; throws when it fails.
void shell(const QString &folder, const QString &command);

/// What the runs work on, made once in a folder: photoplotter data, which is what
/// customers' archives are full of. The same each time.
class Material {
public:
    struct Sizes {
        int bigMiB = 1024;
        int hugeMiB = 4096;
        int files = 20000;
        int serverMiB = 1024;
    };

    Material(const QString &folder, const Sizes &sizes);

    /// A packed tar of one large text file.
    QString bigTgz() const;
    /// Many small files in some two hundred folders, packed in both ways.
    QString manyTgz() const;
    QString manyZip() const;
    /// A folder of large text files, as much as the one in bigTgz().
    QString textFolder() const;
    /// One file that does not shrink much.
    QString hugeFile() const;
    /// The same, of the size that is put on a server.
    QString serverFile() const;

private:
    QString make(const QString &name, const QString &command) const;
    QString manyFolder() const;
    QString plotFile(const QString &name, unsigned seed, qint64 mebibytes) const;

    QDir m_dir;
    Sizes m_sizes;
};

} // namespace KODMS::Bench
