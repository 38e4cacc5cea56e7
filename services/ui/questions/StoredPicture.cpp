// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/StoredPicture.h"

#include "services/filestore/FileStore.h"
#include "services/records/Guid.h"
#include "services/ui/questions/PictureFile.h"

#include <QDir>
#include <QFile>

namespace KODMS::Services {

Result<QImage> readStoredPicture(const FileStore &store, const QString &storedName,
                                 const QString &folder, const QSize &bound, Progress &progress)
{
    const QString path = QDir(folder).filePath(newGuid());
    if (Outcome fetched = store.get(storedName, path, progress); !fetched)
        return fetched;
    QByteArray bytes;
    {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            bytes = file.read(PictureFile::MostBytes + 1);
    }
    QFile::remove(path);
    return PictureFile::decode(bytes, bound);
}

} // namespace KODMS::Services
