// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"

#include <QTemporaryDir>

namespace KODMS::Tests {

/// A fresh, empty place for stores of the kind that KODMS_TEST_STORE names: a folder, or
/// with "gridfs" a database on the test server. It goes with this object.
class StoreUnderTest {
public:
    StoreUnderTest();
    ~StoreUnderTest();
    StoreUnderTest(const StoreUnderTest &) = delete;
    StoreUnderTest &operator=(const StoreUnderTest &) = delete;

    static bool isGridFs();

    Services::FileStoreSettings settings() const { return m_settings; }

    std::unique_ptr<Services::FileStore> opened() const;
    std::unique_ptr<Services::FileStore> opened(const QString &bucket) const;

    /// Files on the disk that are neither stored ones nor locks of the living; nothing on
    /// a server, whose leftovers the store itself tells.
    QStringList strayFiles() const;
    /// Nothing has been written.
    bool isUntouched() const;

private:
    QTemporaryDir m_dir;
    Services::FileStoreSettings m_settings;
};

/// The regular and hidden files anywhere below a folder.
QStringList filesBelow(const QString &folder);
bool writeBytes(const QString &path, const QByteArray &bytes);
QByteArray bytesOf(const QString &path);

} // namespace KODMS::Tests
