// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsFile.h"

namespace KODMS::Services {

namespace {

constexpr int DigestLength = 64;
constexpr qint64 LargestDocument = 16 * 1024 * 1024;

void readMetadata(const BsonView &metadata, GridFsFile &file)
{
    file.owner = metadata.text("owner");
    file.sha256 = metadata.text("sha256").toLatin1();
    const bool isDigest = file.sha256.size() == DigestLength &&
                          QByteArray::fromHex(file.sha256).toHex() == file.sha256;
    if (!isDigest)
        file.sha256.clear();
}

} // namespace

std::optional<GridFsFile> GridFsFile::parse(const BsonView &document)
{
    GridFsFile file;
    file.id = document.id("_id");
    file.name = document.text("filename");
    file.size = document.number("length");
    file.chunkSize = document.number("chunkSize");
    document.inside("metadata",
                    [&file](const BsonView &metadata) { readMetadata(metadata, file); });
    const bool isWhole = !file.id.isNull() && file.size >= 0 && file.chunkSize > 0 &&
                         file.chunkSize <= LargestDocument;
    return isWhole ? std::optional<GridFsFile>(file) : std::nullopt;
}

Bson GridFsFile::toBson(qint64 uploadedAt) const
{
    Bson metadata;
    metadata.text("sha256", QString::fromLatin1(sha256)).text("owner", owner);
    Bson document;
    document.id("_id", id)
        .number("length", size)
        .small("chunkSize", static_cast<int>(chunkSize))
        .time("uploadDate", uploadedAt)
        .text("filename", name)
        .document("metadata", metadata);
    return document;
}

} // namespace KODMS::Services
