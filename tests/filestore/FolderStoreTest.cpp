// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/FolderStore.h"
#include "services/filestore/FolderLayout.h"
#include "tests/support/TestMain.h"

#include <QHash>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;

/// What only the store in a folder has; the rest is in FileStoreTest.
class FolderStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void itsPlaceIsTheFolder()
    {
        const QTemporaryDir dir;
        const auto store =
            FolderStore::open(dir.path(), QStringLiteral("db"), QStringLiteral("bucket"));
        QVERIFY(store);
        QVERIFY(store.value->placeText().contains(dir.path()));
    }

    void aMillionFilesWouldSpread()
    {
        const FolderLayout layout(QStringLiteral("/r"), QStringLiteral("d"), QStringLiteral("b"));
        QHash<QString, int> fans;
        for (int i = 0; i < 100000; ++i)
            ++fans[layout.fan(FolderLayout::newId())];
        QVERIFY(fans.size() > 4000);
        for (const int count : fans)
            QVERIFY(count < 100);
    }
};

KODMS_TEST_MAIN(FolderStoreTest, QCoreApplication)
#include "FolderStoreTest.moc"
