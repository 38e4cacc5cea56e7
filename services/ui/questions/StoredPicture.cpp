// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/StoredPicture.h"

#include "services/disk/StagedFile.h"
#include "services/filestore/FileStore.h"
#include "services/records/Guid.h"
#include "services/ui/questions/PictureFile.h"

#include <QDir>
#include <QFile>

namespace KODMS::Services {

Result<QImage> readStoredPicture(const FileStore &store, const QString &storedName,
                                 const QString &folder, const QSize &bound, Progress &progress)
{
    const StagedFile fetched(QDir(folder).filePath(newGuid()));
    if (Outcome done = store.get(storedName, fetched.path(), progress); !done)
        return done;
    QByteArray bytes;
    QFile file(fetched.path());
    if (file.open(QIODevice::ReadOnly))
        bytes = file.read(PictureFile::MostBytes + 1);
    file.close();
    return PictureFile::decode(bytes, bound);
}

} // namespace KODMS::Services
