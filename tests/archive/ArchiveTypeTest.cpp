// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ArchiveType.h"
#include "tests/archive/RawRar.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/TestMain.h"

#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

/// The form before the magic was invented; the header's sum follows.
QByteArray withoutMagic(QByteArray tar)
{
    int sum = tar.mid(148, 6).toInt(nullptr, 8);
    for (int i = 257; i < 265; ++i) {
        sum -= tar.at(i);
        tar[i] = '\0';
    }
    return tar.replace(148, 6, QByteArray::number(sum, 8).rightJustified(6, '0'));
}

} // namespace

class ArchiveTypeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void recorded_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("type");
        const auto row = [](const char *title, const char *name, const QByteArray &content,
                            const char *type) {
            QTest::newRow(title) << QString::fromLatin1(name) << content
                                 << QString::fromLatin1(type);
        };
        const QByteArray zip = rawZip({{"a", "1"}});
        const QByteArray tar = rawTar({{"a", "1"}});
        row("a zip", "a.zip", zip, "zip");
        row("a zip under a wrong suffix", "a.rar", zip, "zip");
        row("a zip without suffix", "a", zip, "zip");
        row("a zip without entries", "a.zip", rawZip({}), "zip");
        row("a tar", "a.tar", tar, "tar");
        row("a tar without entries", "a.tar", rawTar({}), "tar");
        row("an old tar without its magic", "a.tar", withoutMagic(tar), "tar");
        row("a packed tar", "a.tgz", gzipped(tar), "tgz");
        row("a packed tar called zip", "a.zip", gzipped(tar), "tgz");
        row("7z", "a.7z", sevenZip({{QStringLiteral("a"), "1"}}), "7z");
        row("rar of version 4", "a.rar", rawRar4({{"a", "1"}}), "rar");
        row("rar of version 5", "a.rar", rawRar5({{"a", "1"}}), "rar");
        row("the CAM product's archive", "a.kos", zip, "kos");
        row("the same in capitals", "A.KOS", gzipped(tar), "kos");
        row("text called kos", "a.kos", "hello", "");
        row("text called zip", "a.zip", "hello", "");
        row("an empty file", "a.zip", "", "");
        row("zeros, too few for a tar", "a.tar", QByteArray(600, '\0'), "");
        row("a block of nonsense", "a.tar", QByteArray(2000, 'x'), "");
        row("a tar header with a wrong sum", "a.tar", QByteArray(tar).replace(0, 1, "b"), "");
    }

    void recorded()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QFETCH(QString, type);
        const QString path = m_dir.filePath(name);
        QVERIFY(writeFile(path, content));
        QCOMPARE(recordedArchiveType(path), type);
        QCOMPARE(sniffArchiveType(path) == ArchiveType::Unknown, type.isEmpty());
    }

    void aMissingFileIsNoArchive()
    {
        QCOMPARE(recordedArchiveType(m_dir.filePath(QStringLiteral("no.zip"))), QString());
    }

private:
    QTemporaryDir m_dir;
};

KODMS_TEST_MAIN(ArchiveTypeTest, QCoreApplication)
#include "ArchiveTypeTest.moc"
