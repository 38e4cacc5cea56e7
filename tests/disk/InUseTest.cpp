// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/Disk.h"
#include "services/disk/FileHandle.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"
#include "tests/support/FileHolder.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <memory>

using namespace KODMS::Services;
using KODMS::Tests::FileHolder;
using Shares = FileHolder::Shares;

Q_DECLARE_METATYPE(FileHolder::Shares)

/// Files that another program holds open for itself, as only Windows knows it: the reason is
/// told, nothing is lost, and it can be done later.
class InUseTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_path = m_dir->filePath(QStringLiteral("在用 的.txt"));
        m_other = m_dir->filePath(QStringLiteral("新.txt"));
        write(m_path, "old");
        write(m_other, "new");
    }

    void isNotOpened()
    {
        FileHolder holder(m_path, Shares::Nothing);
        QVERIFY(holder.isHolding());
        const auto file = FileHandle::openForReading(m_path);
        QVERIFY(!file);
        QVERIFY2(file.text().contains(QStringLiteral("其他程序")), qPrintable(file.text()));
        QVERIFY(file.text().contains(m_path));
        holder.release();
        QVERIFY(FileHandle::openForReading(m_path));
        QCOMPARE(read(m_path), QByteArray("old"));
    }

    void isOpenedBesideAReader()
    {
        const FileHolder holder(m_path, Shares::Reading);
        QVERIFY(holder.isHolding());
        QVERIFY(FileHandle::openForReading(m_path));
    }

    void isNotReplaced_data() { addHolders(); }

    void isNotReplaced()
    {
        QFETCH(FileHolder::Shares, shares);
        FileHolder holder(m_path, shares);
        QVERIFY(holder.isHolding());
        Disk::rename(fsPath(m_other), fsPath(m_path), m_error);
        saysInUse();
        QCOMPARE(read(m_other), QByteArray("new"));
        QCOMPARE(names().size(), 2); // neither lost, nor left aside
        holder.release();
        QCOMPARE(read(m_path), QByteArray("old"));
        Disk::rename(fsPath(m_other), fsPath(m_path), m_error);
        QVERIFY2(!m_error, m_error.message().c_str());
        QCOMPARE(read(m_path), QByteArray("new"));
        QCOMPARE(names().size(), 1);
    }

    void isNotRemoved_data() { addHolders(); }

    void isNotRemoved()
    {
        QFETCH(FileHolder::Shares, shares);
        FileHolder holder(m_path, shares);
        QVERIFY(holder.isHolding());
        QVERIFY(!Disk::remove(fsPath(m_path), m_error));
        saysInUse();
        QCOMPARE(names().size(), 2);
        holder.release();
        QCOMPARE(read(m_path), QByteArray("old"));
        QVERIFY(Disk::remove(fsPath(m_path), m_error));
        QVERIFY2(!m_error, m_error.message().c_str());
        QCOMPARE(names().size(), 1);
    }

    void isNotRenamed_data() { addHolders(); }

    void isNotRenamed()
    {
        QFETCH(FileHolder::Shares, shares);
        const QString moved = m_path + QStringLiteral("-moved");
        FileHolder holder(m_path, shares);
        QVERIFY(holder.isHolding());
        Disk::rename(fsPath(m_path), fsPath(moved), m_error);
        saysInUse();
        Disk::rename(fsPath(m_path), fsPath(m_other), m_error); // also not onto another
        saysInUse();
        QCOMPARE(read(m_other), QByteArray("new"));
        holder.release();
        Disk::rename(fsPath(m_path), fsPath(moved), m_error);
        QVERIFY2(!m_error, m_error.message().c_str());
        QCOMPARE(read(moved), QByteArray("old"));
    }

    void isNotCopiedOver()
    {
        FileHolder holder(m_path, Shares::Reading);
        QVERIFY(holder.isHolding());
        Disk::copyFile(fsPath(m_other), fsPath(m_path), m_error);
        saysInUse();
        holder.release();
        QCOMPARE(read(m_path), QByteArray("old"));
        Disk::copyFile(fsPath(m_other), fsPath(m_path), m_error);
        QVERIFY2(!m_error, m_error.message().c_str());
        QCOMPARE(read(m_path), QByteArray("new"));
    }

    /// All the rest of the tree goes; what is in use stays, and the reason is told.
    void aTreeWithAFileInUse()
    {
        const QString tree = m_dir->filePath(QStringLiteral("树/枝"));
        QVERIFY(QDir().mkpath(tree));
        write(tree + QStringLiteral("/a"), "a");
        write(tree + QStringLiteral("/b"), "b");
        write(tree + QStringLiteral("/c"), "c");
        FileHolder holder(tree + QStringLiteral("/b"), Shares::Reading);
        QVERIFY(holder.isHolding());
        Disk::removeAll(fsPath(m_dir->filePath(QStringLiteral("树"))), m_error);
        saysInUse();
        QCOMPARE(QDir(tree).entryList(QDir::Files), QStringList(QStringLiteral("b")));
        holder.release();
        Disk::removeAll(fsPath(m_dir->filePath(QStringLiteral("树"))), m_error);
        QVERIFY2(!m_error, m_error.message().c_str());
        QVERIFY(!QDir(tree).exists());
    }

private:
    static void addHolders()
    {
        QTest::addColumn<FileHolder::Shares>("shares");
        QTest::newRow("held for itself alone") << Shares::Nothing;
        QTest::newRow("others may read") << Shares::Reading;
        QTest::newRow("others may write") << Shares::ReadingAndWriting;
    }

    void saysInUse() const
    {
        QCOMPARE(m_error.value(), EBUSY);
        const Outcome said = ioFailure("touch", m_path, m_error.value());
        QVERIFY2(said.text.contains(QStringLiteral("其他程序")), qPrintable(said.text));
    }

    QStringList names() const
    {
        return QDir(m_dir->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    static void write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), qint64{bytes.size()});
    }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path;
    QString m_other;
    std::error_code m_error;
};

KODMS_TEST_MAIN(InUseTest, QCoreApplication)
#include "InUseTest.moc"
