// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/FileLock.h"
#include "tests/support/TestMain.h"
#include "tests/support/UnixTricks.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using KODMS::Services::FileLock;
using KODMS::Tests::endAtOnce;
using KODMS::Tests::exitCodeOfCopy;

class FileLockTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { QVERIFY(m_dir.isValid()); }

    void isAliveWhileHeld()
    {
        const QString path = m_dir.filePath(QStringLiteral("held"));
        {
            const auto lock = FileLock::create(path);
            QVERIFY(lock);
            QVERIFY(FileLock::isAlive(path));
        }
        QVERIFY(!FileLock::isAlive(path));
        QVERIFY(!QFile::exists(path));
    }

    void aFileWithoutOwnerIsRemoved()
    {
        const QString path = m_dir.filePath(QStringLiteral("remain"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        QVERIFY(!FileLock::isAlive(path));
        QVERIFY(!QFile::exists(path));
    }

    void aMissingFileIsNotAlive()
    {
        QVERIFY(!FileLock::isAlive(m_dir.filePath(QStringLiteral("never"))));
    }

    void aNameThatIsTakenIsRefused()
    {
        const QString path = m_dir.filePath(QStringLiteral("twice"));
        const auto first = FileLock::create(path);
        QVERIFY(first);
        QVERIFY(!FileLock::create(path));
        QVERIFY(FileLock::isAlive(path));
    }

    /// The point of it: nothing has to be cleaned up for the lock to go.
    void aKilledOwnersLockIsDead()
    {
        const QString path = m_dir.filePath(QStringLiteral("killed"));
        const auto ended = exitCodeOfCopy([&path] {
            const auto lock = FileLock::create(path);
            endAtOnce(lock && FileLock::isAlive(path) ? 0 : 1);
            return 1;
        });
        if (!ended)
            QSKIP("a process cannot be copied here");
        QCOMPARE(*ended, 0);
        QVERIFY(QFile::exists(path));
        QVERIFY(!FileLock::isAlive(path));
        QVERIFY(!QFile::exists(path));
    }

private:
    QTemporaryDir m_dir;
};

KODMS_TEST_MAIN(FileLockTest, QCoreApplication)
#include "FileLockTest.moc"
