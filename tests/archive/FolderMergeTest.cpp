// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/FolderMerge.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace KODMS::Services;
using namespace KODMS::Tests;

class FolderMergeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        put("from/a", "new a");
        put("from/sub/b", "new b");
    }

    void intoNothing()
    {
        QVERIFY(merge());
        QCOMPARE(tree("into"), (Tree{{QStringLiteral("a"), "new a"},
                                     {QStringLiteral("sub"), "/"},
                                     {QStringLiteral("sub/b"), "new b"}}));
    }

    void whatStandsThereIsKept()
    {
        put("into/own", "own");
        put("into/sub/own", "own");
        QVERIFY(merge());
        QCOMPARE(tree("into").size(), 5);
        QCOMPARE(tree("into").value(QStringLiteral("sub/own")), QByteArray("own"));
    }

    void filesOfTheSameNameAreReplaced()
    {
        put("into/a", "old a");
        QVERIFY(merge());
        QCOMPARE(tree("into").value(QStringLiteral("a")), QByteArray("new a"));
        QCOMPARE(tree("").value(QStringLiteral("own")), QByteArray());
    }

    void aFolderInTheWayOfAFile()
    {
        put("into/a/inside", "old");
        refusedUnchanged();
    }

    void aFileInTheWayOfAFolder()
    {
        put("into/sub", "old");
        refusedUnchanged();
    }

    /// A link in the target must not carry files elsewhere.
    void aLinkInTheWayOfAFolder()
    {
        QVERIFY(QDir().mkpath(path("elsewhere")));
        QVERIFY(QDir().mkpath(path("into")));
        QVERIFY(QFile::link(path("elsewhere"), path("into/sub")));
        refusedUnchanged();
    }

    void aLinkInTheWayOfAFileIsReplacedNotFollowed()
    {
        put("precious", "precious");
        QVERIFY(QDir().mkpath(path("into")));
        QVERIFY(QFile::link(path("precious"), path("into/a")));
        QVERIFY(merge());
        QCOMPARE(tree("").value(QStringLiteral("precious")), QByteArray("precious"));
        QCOMPARE(tree("into").value(QStringLiteral("a")), QByteArray("new a"));
    }

    /// Root could move everything, so a child without rights tries.
    void aFolderThatCannotBeWrittenUndoesTheRest()
    {
        put("into/a", "old a");
        put("into/sub/own", "own");
        const auto give = [this](const char *name, mode_t mode) {
            const QByteArray bytes = path(name).toUtf8();
            return ::chown(bytes.constData(), 65534, 65534) == 0 || ::geteuid() != 0
                       ? ::chmod(bytes.constData(), mode) == 0
                       : false;
        };
        for (const char *folder : {"", "from", "from/sub", "into"})
            QVERIFY(give(folder, 0777));
        QVERIFY(give("into/sub", 0555));
        const auto before = tree("");
        const pid_t child = ::fork();
        if (child == 0) {
            if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
                ::_exit(9);
            ::_exit(merge() ? 1 : 0);
        }
        int status = -1;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(give("into/sub", 0777));
        QCOMPARE(status, 0);
        QCOMPARE(tree(""), before);
    }

private:
    using Tree = QMap<QString, QByteArray>;

    QString path(const char *name) const { return m_dir->filePath(QString::fromLatin1(name)); }

    void put(const char *name, const QByteArray &bytes) { QVERIFY(writeFile(path(name), bytes)); }

    Tree tree(const char *name) const { return treeOf(path(name)); }

    bool merge() { return bool(FolderMerge(path("from"), path("into")).run(m_progress)); }

    void refusedUnchanged()
    {
        const Tree before = tree("");
        const auto merged = FolderMerge(path("from"), path("into")).run(m_progress);
        QVERIFY(!merged);
        QVERIFY(merged.text.contains(path("into")));
        QCOMPARE(tree(""), before);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    NoProgress m_progress;
};

KODMS_TEST_MAIN(FolderMergeTest, QCoreApplication)
#include "FolderMergeTest.moc"
