// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/Unpacker.h"
#include "services/filestore/FolderStore.h"
#include "services/tables/TableFile.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/FileHolder.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using Shares = FileHolder::Shares;

/// What the services do when another program holds what they need: they say so and name it, lose
/// nothing, leave nothing behind, and can do it later.
class InUseServicesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(writeFile(path("发来/板.zip"), "first"));
        QVERIFY(QDir().mkpath(path("取回")));
        m_store = opened();
    }

    void cleanup() { m_store.reset(); }

    void aSourceInUseIsNotStored()
    {
        FileHolder holder(path("发来/板.zip"), Shares::Nothing);
        QVERIFY(holder.isHolding());
        saysInUse(m_store->put(path("发来/板.zip"), m_name, m_progress), path("发来/板.zip"));
        QVERIFY(!m_store->has(m_name).value);
        holder.release();
        stores();
        QVERIFY(m_store->verify(m_name, m_progress));
    }

    void aSourceThatOthersMayReadIsStored()
    {
        const FileHolder holder(path("发来/板.zip"), Shares::Reading);
        QVERIFY(holder.isHolding());
        stores();
        QVERIFY(m_store->verify(m_name, m_progress));
    }

    void aTargetInUseIsNotReplaced()
    {
        stores();
        const QString target = path("取回/板.zip");
        QVERIFY(writeFile(target, "before"));
        FileHolder holder(target, Shares::Reading);
        QVERIFY(holder.isHolding());
        saysInUse(m_store->get(m_name, target, m_progress), target);
        QCOMPARE(content(target), QByteArray("before"));
        QCOMPARE(treeOf(path("取回")).size(), 1);
        holder.release();
        QVERIFY(m_store->get(m_name, target, m_progress));
        QCOMPARE(content(target), QByteArray("first"));
        QCOMPARE(treeOf(path("取回")).size(), 1);
    }

    void aStoredFileInUseIsNotFetched()
    {
        stores();
        FileHolder holder(body(), Shares::Nothing);
        QVERIFY(holder.isHolding());
        saysInUse(m_store->get(m_name, path("取回/板.zip"), m_progress), body());
        QVERIFY(treeOf(path("取回")).isEmpty());
        QVERIFY(m_store->has(m_name).value);
        holder.release();
        QVERIFY(m_store->get(m_name, path("取回/板.zip"), m_progress));
    }

    /// As when somebody looks into the store's folders with a program of his own.
    void aStoredFilesFolderInUse()
    {
        stores();
        FileHolder holder(QFileInfo(body()).path(), Shares::ReadingAndWriting);
        QVERIFY(holder.isHolding());
        const Outcome removed = m_store->remove(m_name);
        QVERIFY2(removed, qPrintable(removed.cause));
        QVERIFY(!m_store->has(m_name).value);
        QVERIFY(body().isEmpty());
        holder.release();
        stores();
        QVERIFY(m_store->verify(m_name, m_progress));
    }

    void unpackingOverAFileInUseChangesNothing()
    {
        QVERIFY(writeFile(path("发来/板.zip"), rawZip({{"a", "1"}, {"b", "2"}, {"c/d", "3"}})));
        const QString target = path("料号");
        QVERIFY(writeFile(target + QStringLiteral("/a"), "old a"));
        QVERIFY(writeFile(target + QStringLiteral("/b"), "old b"));
        const auto before = treeOf(m_dir->path());
        FileHolder holder(target + QStringLiteral("/b"), Shares::Reading);
        QVERIFY(holder.isHolding());
        const auto unpacked = unpackArchive(path("发来/板.zip"), target, {}, m_progress);
        saysInUse(unpacked.outcome, target + QStringLiteral("/b"));
        QVERIFY(treeOf(m_dir->path()) == before);
        holder.release();
        QVERIFY(unpackArchive(path("发来/板.zip"), target, {}, m_progress));
        QCOMPARE(content(target + QStringLiteral("/b")), QByteArray("2"));
    }

    void aListThatASpreadsheetShowsIsNotReplaced()
    {
        const QString list = path("取回/清单.csv");
        QVERIFY(writeFile(list, "before"));
        FileHolder holder(list, Shares::Reading);
        QVERIFY(holder.isHolding());
        saysInUse(writesList(list), list);
        QCOMPARE(content(list), QByteArray("before"));
        QCOMPARE(treeOf(path("取回")).size(), 1);
        holder.release();
        const Outcome written = writesList(list);
        QVERIFY2(written, qPrintable(written.cause));
        QVERIFY(content(list).contains("板"));
        QCOMPARE(treeOf(path("取回")).size(), 1);
    }

private:
    QString path(const char *below) const { return m_dir->filePath(QString::fromUtf8(below)); }

    std::unique_ptr<FileStore> opened() const
    {
        auto store = FolderStore::open(path("库"), QStringLiteral("db"), QStringLiteral("jobs"));
        if (!store)
            qFatal("the test has no store");
        return std::move(store.value);
    }

    void stores()
    {
        const Outcome put = m_store->put(path("发来/板.zip"), m_name, m_progress);
        QVERIFY2(put, qPrintable(put.cause));
    }

    /// The one file of the store that is in no trash; empty when there is none.
    QString body() const
    {
        QDirIterator each(path("库"), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        QString found;
        while (each.hasNext())
            if (const QString file = each.next(); file.contains(QStringLiteral("/files/")))
                found = file;
        return found;
    }

    static Outcome writesList(const QString &path)
    {
        auto list =
            TableFile::create(path, TableFile::Format::Csv, {{QStringLiteral("料号"), 10, false}});
        if (!list)
            return list.outcome;
        if (Outcome added = list.value->addRow({QStringLiteral("板")}); !added)
            return added;
        return list.value->publish();
    }

    static QByteArray content(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static void saysInUse(const Outcome &outcome, const QString &path)
    {
        QVERIFY(!outcome);
        QVERIFY2(outcome.text.contains(QStringLiteral("其他程序")), qPrintable(outcome.text));
        QVERIFY2(outcome.text.contains(QFileInfo(path).fileName()), qPrintable(outcome.text));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<FileStore> m_store;
    const QString m_name = QStringLiteral("a1b000001.zip");
    NoProgress m_progress;
};

KODMS_TEST_MAIN(InUseServicesTest, QCoreApplication)
#include "InUseServicesTest.moc"
