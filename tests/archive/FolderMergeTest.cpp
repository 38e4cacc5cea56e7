// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/FolderMerge.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/TestMain.h"
#include "tests/support/WithoutPrivilege.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

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

    void aFolderThatCannotBeWrittenUndoesTheRest()
    {
        put("into/a", "old a");
        put("into/sub/own", "own");
        const auto before = tree("");
        bool isBound = false;
        bool hasMerged = false;
        QVERIFY(QFile::setPermissions(path("into/sub"), QFile::ReadOwner | QFile::ExeOwner));
        {
            const WithoutPrivilege bound;
            isBound = bound.isBound();
            hasMerged = merge();
        }
        QVERIFY(QFile::setPermissions(path("into/sub"),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        if (!isBound)
            QSKIP("this system does not bind the test to rights");
        QVERIFY(!hasMerged);
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
