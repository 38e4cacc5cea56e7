// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/FileHandle.h"
#include "services/disk/Disk.h"
#include "services/disk/FsPath.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace KODMS::Services;

/// Open files of the operating system: the same promises on every one.
class FileHandleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_path = m_dir->filePath(QStringLiteral("文件"));
    }

    void whatIsWrittenIsRead()
    {
        auto file = created();
        QVERIFY(file.write("hello ", 6));
        QVERIFY(file.write("world", 5));
        QVERIFY(file.sync());
        QVERIFY(file.close());
        QVERIFY(!file.isOpen());
        QVERIFY(file.close()); // once more does no harm
        QCOMPARE(content(), QByteArray("hello world"));
    }

    void writingInTheMiddleLeavesThePlaceAlone()
    {
        auto file = created();
        QVERIFY(file.write("0123456789", 10));
        QVERIFY(file.writeAt(2, "xy", 2));
        QVERIFY(file.write("end", 3));
        QVERIFY(file.close());
        QCOMPARE(content(), QByteArray("01xy456789end"));
    }

    void aNewFileReplacesNothing()
    {
        created();
        QVERIFY(!FileHandle::createNew(m_path));
        QVERIFY(!FileHandle::createNew(m_path + QStringLiteral("-no/file")));
    }

    void onlyFilesAreRead()
    {
        QVERIFY(!FileHandle::openForReading(m_path));
        const auto folder = FileHandle::openForReading(m_dir->path());
        QVERIFY(!folder);
        QVERIFY2(folder.text().contains(m_dir->path()), qPrintable(folder.text()));
    }

    void theEndOfAFileIsZeroBytes()
    {
        auto file = created();
        QVERIFY(file.write("12", 2));
        auto reader = FileHandle::openForReading(m_path);
        QVERIFY(reader);
        char bytes[8] = {};
        QCOMPARE(reader.value.read(bytes, sizeof bytes).value, qint64{2});
        QCOMPARE(reader.value.read(bytes, sizeof bytes).value, qint64{0});
    }

    void stampsFollowTheContent()
    {
        auto file = created();
        QVERIFY(file.write("12", 2));
        const auto before = file.stamp();
        QVERIFY(before);
        QCOMPARE(before.value.size, qint64{2});
        QVERIFY(before.value.modified > 0);
        QVERIFY(before.value.linked);
        QVERIFY(file.write("3", 1));
        const auto after = file.stamp();
        QVERIFY(after);
        QVERIFY(!(after.value == before.value));
    }

    void aRemovedFileHasNoName()
    {
        auto file = created();
        std::error_code error;
        QVERIFY(Disk::remove(fsPath(m_path), error));
        const auto stamp = file.stamp();
        QVERIFY(stamp);
        QVERIFY(!stamp.value.linked);
    }

    /// Somebody else may have taken the name already.
    void aRemovedFileHasNoNameAlsoWhenAnotherHasIt()
    {
        auto file = created();
        std::error_code error;
        QVERIFY(Disk::remove(fsPath(m_path), error));
        const auto another = created();
        QVERIFY(another.isOpen());
        const auto stamp = file.stamp();
        QVERIFY(stamp);
        QVERIFY(!stamp.value.linked);
        QVERIFY(another.stamp().value.linked);
    }

    void oneLockAtATime()
    {
        auto first = created();
        auto second = FileHandle::openForReading(m_path);
        QVERIFY(second);
        QVERIFY(first.lock(false));
        QVERIFY(!second.value.lock(false));
        QVERIFY(first.write("still writable", 14));
        QVERIFY(first.close());
        QVERIFY(second.value.lock(false));
    }

    void aLockedFileIsRead()
    {
        auto locked = created();
        QVERIFY(locked.write("12", 2));
        QVERIFY(locked.lock(true));
        auto reader = FileHandle::openForReading(m_path);
        QVERIFY(reader);
        char bytes[8] = {};
        QCOMPARE(reader.value.read(bytes, sizeof bytes).value, qint64{2});
    }

    void foldersAreMadeAndSynced()
    {
        const QString folder = m_dir->filePath(QStringLiteral("a/b/料号"));
        QVERIFY(makeFolder(folder));
        QVERIFY(makeFolder(folder));
        QVERIFY(QFileInfo(folder).isDir());
        QVERIFY(syncFolder(folder));
        QVERIFY(!syncFolder(folder + QStringLiteral("-no")));
        created();
        QVERIFY(!makeFolder(m_path + QStringLiteral("/below")));
    }

private:
    FileHandle created() const
    {
        auto file = FileHandle::createNew(m_path);
        if (!file)
            qFatal("the test cannot create its file");
        return std::move(file.value);
    }

    QByteArray content() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path;
};

KODMS_TEST_MAIN(FileHandleTest, QCoreApplication)
#include "FileHandleTest.moc"
