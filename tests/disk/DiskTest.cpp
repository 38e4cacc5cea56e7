// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/Disk.h"
#include "services/disk/FileHandle.h"
#include "services/disk/FsPath.h"
#include "tests/support/TestMain.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <vector>

using namespace KODMS::Services;
using Disk::FileType;

/// Names on a disk: the same on every system, with the same errors.
class DiskTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void typesAreTold()
    {
        write("file", "1");
        QCOMPARE(Disk::typeOf(at("file"), m_error), FileType::regular);
        QVERIFY(!m_error);
        QCOMPARE(Disk::typeOf(at(""), m_error), FileType::directory);
        QCOMPARE(Disk::typeOf(at("nothing"), m_error), FileType::not_found);
        QCOMPARE(Disk::typeBehindLinks(at("file"), m_error), FileType::regular);
        QCOMPARE(Disk::typeBehindLinks(at("nothing/below"), m_error), FileType::not_found);
    }

    void sizeAndTimeOfAFile()
    {
        const qint64 before = QDateTime::currentSecsSinceEpoch();
        write("file", "12345");
        QCOMPARE(Disk::fileSize(at("file"), m_error), std::uintmax_t{5});
        QVERIFY(!m_error);
        const qint64 modified = Disk::modifiedAt(at("file"), m_error);
        QVERIFY(!m_error);
        QVERIFY(modified >= before - 2);
        QVERIFY(modified <= QDateTime::currentSecsSinceEpoch() + 2);
    }

    void whatIsMissingIsSaidToBeMissing()
    {
        Disk::fileSize(at("no"), m_error);
        QCOMPARE(m_error.value(), ENOENT);
        Disk::modifiedAt(at("no"), m_error);
        QCOMPARE(m_error.value(), ENOENT);
        Disk::children(at("no"), m_error);
        QCOMPARE(m_error.value(), ENOENT);
        Disk::rename(at("no"), at("new"), m_error);
        QCOMPARE(m_error.value(), ENOENT);
        Disk::copyFile(at("no"), at("new"), m_error);
        QCOMPARE(m_error.value(), ENOENT);
        QVERIFY(!Disk::remove(at("no"), m_error));
        QVERIFY(!m_error);
    }

    void childrenOfAFolder()
    {
        write("b", "1");
        write(".hidden", "2");
        QVERIFY(Disk::createFolders(at("料号"), m_error));
        QCOMPARE(names(), QStringList({QStringLiteral(".hidden"), QStringLiteral("b"),
                                       QStringLiteral("料号")}));
    }

    void foldersAreMadeWithThoseAbove()
    {
        QVERIFY(Disk::createFolders(at("a/b/c"), m_error));
        QVERIFY(!m_error);
        QVERIFY(!Disk::createFolders(at("a/b/c"), m_error));
        QVERIFY(!m_error);
        write("file", "1");
        QVERIFY(!Disk::createFolders(at("file/sub"), m_error));
        QVERIFY(bool(m_error));
    }

    void aFileIsRenamedOverAnother()
    {
        write("old", "old");
        write("new", "new");
        Disk::rename(at("new"), at("old"), m_error);
        QVERIFY(!m_error);
        QCOMPARE(read("old"), QByteArray("new"));
        QCOMPARE(names(), QStringList(QStringLiteral("old")));
    }

    void aFileIsRenamedOverOneThatIsBeingRead()
    {
        write("old", "old");
        write("new", "new");
        auto reader = FileHandle::openForReading(name("old"));
        QVERIFY(reader);
        Disk::rename(at("new"), at("old"), m_error);
        QVERIFY2(!m_error, m_error.message().c_str());
        QByteArray bytes(3, ' ');
        QCOMPARE(reader.value.read(bytes.data(), bytes.size()).value, qint64{3});
        QCOMPARE(bytes, QByteArray("old"));
        QVERIFY(reader.value.close());
        QCOMPARE(read("old"), QByteArray("new"));
        QCOMPARE(names(), QStringList(QStringLiteral("old")));
    }

    void aFileThatIsReadIsReplacedAgainAndAgain()
    {
        write("old", "0");
        std::vector<FileHandle> readers;
        for (int i = 1; i < 10; ++i) {
            auto reader = FileHandle::openForReading(name("old"));
            QVERIFY(reader);
            readers.push_back(std::move(reader.value));
            write("new", QByteArray::number(i));
            Disk::rename(at("new"), at("old"), m_error);
            QVERIFY2(!m_error, m_error.message().c_str());
            QCOMPARE(read("old"), QByteArray::number(i));
        }
        for (int i = 0; i < 9; ++i) {
            char byte = ' ';
            QCOMPARE(readers[static_cast<std::size_t>(i)].read(&byte, 1).value, qint64{1});
            QCOMPARE(byte, char('0' + i));
        }
        readers.clear();
        QCOMPARE(names(), QStringList(QStringLiteral("old")));
    }

    void anOpenFileIsRenamed()
    {
        auto file = FileHandle::createNew(name("part"));
        QVERIFY(file);
        QVERIFY(file.value.write("12", 2));
        write("old", "old");
        Disk::rename(at("part"), at("old"), m_error);
        QVERIFY2(!m_error, m_error.message().c_str());
        QVERIFY(file.value.write("3", 1));
        QVERIFY(file.value.close());
        QCOMPARE(read("old"), QByteArray("123"));
    }

    void aFileIsRemovedWhileItIsRead()
    {
        write("file", "old");
        auto reader = FileHandle::openForReading(name("file"));
        QVERIFY(reader);
        QVERIFY(Disk::remove(at("file"), m_error));
        QVERIFY(!QFile::exists(name("file")));
        write("file", "new"); // the name is free at once
        QByteArray bytes(3, ' ');
        QCOMPARE(reader.value.read(bytes.data(), bytes.size()).value, qint64{3});
        QCOMPARE(bytes, QByteArray("old"));
        QVERIFY(reader.value.close());
        QCOMPARE(read("file"), QByteArray("new"));
        QCOMPARE(names(), QStringList(QStringLiteral("file")));
    }

    void aFolderInTheWayIsNotReplaced()
    {
        write("file", "1");
        QVERIFY(Disk::createFolders(at("folder/full"), m_error));
        Disk::rename(at("file"), at("folder"), m_error);
        QCOMPARE(m_error.value(), EISDIR);
        QVERIFY(Disk::createFolders(at("other"), m_error));
        Disk::rename(at("other"), at("folder"), m_error);
        QVERIFY(m_error.value() == ENOTEMPTY || m_error.value() == EEXIST);
        QVERIFY(QFileInfo(name("folder/full")).isDir());
    }

    void aFileInTheWayOfAFolderIsNotReplaced()
    {
        QVERIFY(Disk::createFolders(at("folder/full"), m_error));
        write("file", "1");
        Disk::rename(at("folder"), at("file"), m_error);
        QCOMPARE(m_error.value(), ENOTDIR);
        QCOMPARE(read("file"), QByteArray("1"));
        QVERIFY(QFileInfo(name("folder/full")).isDir());
    }

    void aFolderReplacesAnEmptyOne()
    {
        QVERIFY(Disk::createFolders(at("from/inside"), m_error));
        QVERIFY(Disk::createFolders(at("to"), m_error));
        Disk::rename(at("from"), at("to"), m_error);
        QVERIFY2(!m_error, m_error.message().c_str());
        QCOMPARE(names(), QStringList(QStringLiteral("to")));
        QVERIFY(QFileInfo(name("to/inside")).isDir());
    }

    void copiesReplace()
    {
        write("from", "from");
        write("to", "something longer");
        Disk::copyFile(at("from"), at("to"), m_error);
        QVERIFY(!m_error);
        QCOMPARE(read("to"), QByteArray("from"));
        QCOMPARE(read("from"), QByteArray("from"));
    }

    void treesAreRemoved()
    {
        QVERIFY(Disk::createFolders(at("tree/a/b"), m_error));
        write("tree/a/file", "1");
        write("tree/a/b/料号", "1");
        Disk::removeAll(at("tree"), m_error);
        QVERIFY(!m_error);
        QCOMPARE(names(), QStringList());
        Disk::removeAll(at("tree"), m_error);
        QVERIFY(!m_error);
    }

    /// Windows by default takes no more than 260 characters.
    void longPaths()
    {
        const QString part = QString(60, QLatin1Char('x')) + QStringLiteral("料号");
        QString folder = name("long");
        for (int i = 0; i < 8; ++i)
            folder += QLatin1Char('/') + part;
        QVERIFY(Disk::createFolders(fsPath(folder), m_error));
        QVERIFY2(!m_error, m_error.message().c_str());
        const QString file = folder + QStringLiteral("/file");
        auto created = FileHandle::createNew(file);
        QVERIFY2(created, qPrintable(created.text()));
        QVERIFY(created.value.write("long", 4));
        QVERIFY(created.value.close());
        QCOMPARE(Disk::children(fsPath(folder), m_error).size(), std::size_t{1});
        Disk::rename(fsPath(file), fsPath(file + QStringLiteral("-moved")), m_error);
        QVERIFY2(!m_error, m_error.message().c_str());
        QCOMPARE(Disk::fileSize(fsPath(file + QStringLiteral("-moved")), m_error),
                 std::uintmax_t{4});
        QVERIFY(FileHandle::openForReading(file + QStringLiteral("-moved")));
        Disk::removeAll(at("long"), m_error);
        QVERIFY2(!m_error, m_error.message().c_str());
        QCOMPARE(names(), QStringList());
    }

private:
    QString name(const char *relative) const
    {
        return m_dir->filePath(QString::fromUtf8(relative));
    }

    Disk::Path at(const char *relative) const { return fsPath(name(relative)); }

    void write(const char *relative, const QByteArray &bytes) const
    {
        QFile file(name(relative));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), qint64{bytes.size()});
    }

    QByteArray read(const char *relative) const
    {
        QFile file(name(relative));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QStringList names()
    {
        QStringList found;
        for (const Disk::Path &child : Disk::children(at(""), m_error))
            found << fromFsPath(child.filename());
        std::sort(found.begin(), found.end());
        return found;
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::error_code m_error;
};

KODMS_TEST_MAIN(DiskTest, QCoreApplication)
#include "DiskTest.moc"
