// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <functional>
#include <memory>

namespace KODMS::Services {

struct StoredFileInfo {
    QString name;
    qint64 size = 0;
    QByteArray sha256; ///< 64 lower-case hexadecimal digits
};

/// Receives the bytes of a stored file in order; a failure ends the reading.
using ByteSink = std::function<Outcome(const char *data, qint64 size)>;

/// While a hold lives, files removed from the store stay readable through it, in
/// whichever process they are removed. A backup takes one before it looks at the
/// records, so that every file they name can still be read.
class StoreHold {
public:
    virtual ~StoreHold() = default;

    /// The file as it stood when the hold was taken; failure when there is none.
    virtual Result<StoredFileInfo> find(const QString &name) const = 0;
    /// Hands the file's bytes to `sink`. Failure when they are not the bytes that
    /// were put; what the sink has received is then worthless.
    virtual Outcome read(const QString &name, const ByteSink &sink, Progress &progress) const = 0;
};

/// Where the job files are. A stored file never changes: it is put whole, read,
/// and removed whole, and its SHA-256 is checked whenever it is read.
/// Every call may come from any thread and from several processes at once.
class FileStore {
public:
    virtual ~FileStore() = default;

    /// Opens the store that the settings name. Remains of killed writers are swept;
    /// nothing else is written before the first put.
    static Result<std::unique_ptr<FileStore>> create(const FileStoreSettings &settings);

    /// 1 to 200 of A-Z a-z 0-9 . _ - with no leading dot.
    static bool isValidStoredName(const QString &name);

    /// Stores a copy of a local file. Refused when the name is taken. On failure,
    /// also after a kill, the store is as it was.
    virtual Outcome put(const QString &localPath, const QString &name, Progress &progress) = 0;
    /// Writes a copy of the stored file to `localPath`, after removing the file or
    /// link that stands there. On failure nothing stands there.
    virtual Outcome get(const QString &name, const QString &localPath,
                        Progress &progress) const = 0;
    /// Failure when there is no such file.
    virtual Outcome remove(const QString &name) = 0;
    /// The same, for whom it does not matter who removes it: success as well when there
    /// is no such file. After a failure it may still be there.
    Outcome removeIfThere(const QString &name);
    /// Whether there is such a file; failure when the store cannot be asked.
    virtual Result<bool> has(const QString &name) const = 0;
    /// What was recorded with the file; failure when there is none.
    virtual Result<StoredFileInfo> find(const QString &name) const = 0;
    /// Every stored file, by name.
    virtual Result<QVector<StoredFileInfo>> list() const = 0;
    /// Reads the file and compares size and SHA-256 with what was recorded.
    virtual Outcome verify(const QString &name, Progress &progress) const = 0;

    virtual Result<std::unique_ptr<StoreHold>> hold() = 0;

    /// True while the program that put the file may still be about to record it. A
    /// file that no record names and whose putter is gone never will be.
    virtual bool isPutterAlive(const QString &name) const = 0;

    /// What no record could ever name: remains of killed writers, foreign files.
    /// Paths relative to the store, in order.
    virtual Result<QStringList> leftovers() const = 0;
    /// Removes the remains of killed writers; foreign files are left alone.
    virtual Outcome sweep() = 0;

    /// For people: which place this is.
    virtual QString placeText() const = 0;

    FileStore(const FileStore &) = delete;
    FileStore &operator=(const FileStore &) = delete;

protected:
    FileStore() = default;
};

} // namespace KODMS::Services
