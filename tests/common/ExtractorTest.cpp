// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/common/DMS_Function.h"
#include "services/notices/NoticeHub.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Tests;
using KODMS::DMS_Function::ExtractorFileFromcompressFile;
using KODMS::Services::NoticeHub;

class ExtractorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_archive = m_dir->filePath(QStringLiteral("料号.tgz"));
        m_target = m_dir->filePath(QStringLiteral("料号/"));
    }

    void theNumberOfFilesIsReturned()
    {
        QVERIFY(writeFile(m_archive, gzipped(rawTar({{"a", "1"}, {"d/b", "2"}}))));
        QCOMPARE(extract("tgz"), 2);
        QCOMPARE(treeOf(m_target).size(), 3);
    }

    void theTypeIsOnlyAHint()
    {
        QVERIFY(writeFile(m_archive, rawZip({{"a", "1"}})));
        for (const char *type : {"zip", "tgz", "rar", "kos", "file", "", "nonsense"})
            QCOMPARE(extract(type), 1);
    }

    void anEmptyArchiveGivesZero()
    {
        QVERIFY(writeFile(m_archive, rawZip({})));
        QCOMPARE(extract("zip"), 0);
    }

    void damageGivesMinusOneAndLeavesNothing()
    {
        QVERIFY(writeFile(m_archive, gzipped(rawTar({{"a", QByteArray(5000, 'a')}})).left(40)));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^unpack \\[")));
        QCOMPARE(extract("tgz"), -1);
        QVERIFY(!QFileInfo::exists(m_target));
    }

    /// The fetch that did not bring it has said why: a second notice would hide the first.
    void aMissingArchiveGivesMinusOneAndNoNotice()
    {
        m_target = m_dir->filePath(QStringLiteral("no folder/料号/"));
        const QSignalSpy notices(&NoticeHub::instance(), &NoticeHub::raised);
        QCOMPARE(extract("tgz"), -1);
        QCOMPARE(notices.size(), 0);
        QVERIFY(!QFileInfo::exists(m_dir->filePath(QStringLiteral("no folder"))));
    }

    void noTargetGivesMinusOne()
    {
        QVERIFY(writeFile(m_archive, rawZip({{"a", "1"}})));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^unpack \\[")));
        QCOMPARE(ExtractorFileFromcompressFile(m_archive.toStdWString(), L"zip", L""), -1);
    }

    void theLimitsAreTheConfiguredOnes()
    {
        TestInstallation home;
        auto configuration = KODMS::Services::Configuration::load(home.iniPath());
        QVERIFY(configuration);
        configuration.value.limits.archiveEntries = 1;
        QVERIFY(configuration.value.save());
        home.start();
        QVERIFY(writeFile(m_archive, rawZip({{"a", "1"}})));
        QCOMPARE(extract("zip"), 1);
        QVERIFY(writeFile(m_archive, rawZip({{"a", "1"}, {"b", "2"}})));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^unpack \\[")));
        QCOMPARE(extract("zip"), -1);
    }

private:
    int extract(const char *type)
    {
        return ExtractorFileFromcompressFile(m_archive.toStdWString(),
                                             QString::fromLatin1(type).toStdWString(),
                                             m_target.toStdWString());
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_archive;
    QString m_target;
};

KODMS_TEST_MAIN(ExtractorTest, QCoreApplication)
#include "ExtractorTest.moc"
