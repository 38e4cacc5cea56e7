// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/HashedStream.h"

#include "services/disk/IoFailure.h"
#include "services/filestore/SideHash.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

struct HashedStreamTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::HashedStream)

public:
    static QString damaged(const QString &name)
    {
        return tr("文件库中的文件已损坏，与存入时不同：%1").arg(name);
    }
};

} // namespace

Result<StreamSums> streamHashed(FileHandle &source, const ByteSink &sink, Progress &progress)
{
    SideHash hash;
    StreamSums sums;
    for (;;) {
        if (progress.isCancelled())
            return cancelledFailure();
        SideHash::Piece piece = hash.emptyPiece();
        const Result<qint64> got =
            source.read(piece.bytes.data(), static_cast<qint64>(piece.bytes.size()));
        if (!got)
            return got.outcome;
        if (got.value == 0)
            break;
        if (sink) {
            if (Outcome taken = sink(piece.bytes.data(), got.value); !taken)
                return taken;
        }
        piece.size = got.value;
        hash.add(std::move(piece));
        sums.size += got.value;
        progress.advance(got.value);
    }
    sums.sha256 = hash.finish();
    return sums;
}

Outcome compareSums(const StoredFileInfo &recorded, const StreamSums &read)
{
    if (recorded.size == read.size && recorded.sha256 == read.sha256)
        return Outcome::success();
    return Outcome::failure(HashedStreamTexts::damaged(recorded.name),
                            QStringLiteral("recorded %1 bytes %2, read %3 bytes %4")
                                .arg(recorded.size)
                                .arg(QString::fromLatin1(recorded.sha256))
                                .arg(read.size)
                                .arg(QString::fromLatin1(read.sha256)));
}

} // namespace KODMS::Services
