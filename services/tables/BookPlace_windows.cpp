// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tables/BookPlace.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <vector>

namespace KODMS::Services {

BookPlace::BookPlace(FileHandle &file)
    : m_file(file), m_path(QDir(QDir::tempPath())
                               .filePath(QStringLiteral("kodms-list-") +
                                         QUuid::createUuid().toString(QUuid::Id128)))
{
}

BookPlace::~BookPlace()
{
    QFile::remove(m_path);
}

Outcome BookPlace::deliver()
{
    constexpr qint64 piece = qint64{1} << 18;
    Result<FileHandle> book = FileHandle::openForReading(m_path);
    if (!book)
        return book.outcome;
    std::vector<char> bytes(piece);
    for (;;) {
        const Result<qint64> got = book.value.read(bytes.data(), piece);
        if (!got)
            return got.outcome;
        if (got.value == 0)
            return Outcome::success();
        if (Outcome written = m_file.write(bytes.data(), got.value); !written)
            return written;
    }
}

} // namespace KODMS::Services
