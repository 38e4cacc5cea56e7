// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/Disk.h"
#include "services/disk/FileHandle.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"
#include "services/disk/WindowsCalls.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

#include <windows.h>

using namespace KODMS::Services;

/// Files that another program holds open for itself alone, as only Windows knows it.
class InUseTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_path = m_dir.filePath(QStringLiteral("在用.txt"));
        m_other = m_dir.filePath(QStringLiteral("新.txt"));
        write(m_path, "old");
        write(m_other, "new");
        m_holder = ::CreateFileW(windowsPath(m_path).c_str(), GENERIC_READ, 0, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        QVERIFY(m_holder != INVALID_HANDLE_VALUE);
    }

    void cleanup()
    {
        ::CloseHandle(m_holder);
        QCOMPARE(read(m_path), QByteArray("old")); // nothing of it was lost
    }

    void isNotOpened()
    {
        const auto file = FileHandle::openForReading(m_path);
        QVERIFY(!file);
        QVERIFY2(file.text().contains(QStringLiteral("其他程序")), qPrintable(file.text()));
        QVERIFY(file.text().contains(m_path));
    }

    void isNotRemoved()
    {
        QVERIFY(!Disk::remove(fsPath(m_path), m_error));
        QCOMPARE(m_error.value(), EBUSY);
        const Outcome said = ioFailure("remove", m_path, m_error.value());
        QVERIFY2(said.text.contains(QStringLiteral("其他程序")), qPrintable(said.text));
    }

    void isNotRenamed()
    {
        Disk::rename(fsPath(m_path), fsPath(m_path + QStringLiteral("-moved")), m_error);
        QCOMPARE(m_error.value(), EBUSY);
    }

    void isNotReplaced()
    {
        Disk::rename(fsPath(m_other), fsPath(m_path), m_error);
        QVERIFY(m_error.value() == EBUSY || m_error.value() == EACCES);
        QCOMPARE(read(m_other), QByteArray("new"));
    }

private:
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

    QTemporaryDir m_dir;
    QString m_path;
    QString m_other;
    HANDLE m_holder = INVALID_HANDLE_VALUE;
    std::error_code m_error;
};

KODMS_TEST_MAIN(InUseTest, QCoreApplication)
#include "InUseTest.moc"
