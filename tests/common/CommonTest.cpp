// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/common/Common.h"

#include "foundation/bll/Odbpp_JobCompressBll.h"
#include "services/archive/Unpacker.h"
#include "services/records/Guid.h"
#include "services/records/TimeText.h"
#include "services/records/bll/StoredFileRecords.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/HasFile.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::Common;

namespace {

void expectFailure(const char *operation)
{
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^%1 \\[").arg(
                             QRegularExpression::escape(QString::fromLatin1(operation)))));
}

} // namespace

class CommonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_home = std::make_unique<TestInstallation>();
        m_home->actAsAdmin();
        m_file = m_home->path(QStringLiteral("来件.zip"));
        QVERIFY(writeFile(m_file, "content"));
        const auto config = Common::commonInterface()->getConfig();
        m_database = config.fileStoreDb;
        m_bucket = config.fileStoreBucket;
    }

    void cleanup() { m_home.reset(); }

    void theConfigurationIsTheRunningOne()
    {
        const auto config = Common::commonInterface()->getConfig();
        const Configuration &running = m_home->runtime().configuration();
        QCOMPARE(QString::fromStdString(config.stagingDir), running.paths.staging);
        QCOMPARE(QString::fromStdString(config.downloadDir), running.paths.download);
        QCOMPARE(QString::fromStdString(config.robotHost), running.robot.host);
        QCOMPARE(config.robotPort, running.robot.port);
        QVERIFY(!config.fileStoreDb.empty());
        QVERIFY(!config.fileStoreBucket.empty());
    }

    void withoutServicesTheConfigurationIsEmpty()
    {
        m_home->stop();
        expectFailure("getConfig");
        QVERIFY(Common::commonInterface()->getConfig().downloadDir.empty());
    }

    void guidsAreNew()
    {
        QSet<QString> seen;
        for (int i = 0; i < 1000; ++i) {
            const QString guid = QString::fromStdString(Common::commonInterface()->getGUID());
            QVERIFY(isGuid(guid));
            seen.insert(guid);
        }
        QCOMPARE(seen.size(), 1000);
    }

    void putStoresTheFile()
    {
        QCOMPARE(put("a.zip"), 0);
        QVERIFY(hasFile(m_home->store(), QStringLiteral("a.zip")));
        QVERIFY(m_home->store().verify(QStringLiteral("a.zip"), m_progress));
    }

    void putElsewhere()
    {
        QCOMPARE(Common::MongodbPut("other", "place", m_file.toStdString(), "a.zip"), 0);
        QVERIFY(!hasFile(m_home->store(), QStringLiteral("a.zip")));
    }

    void putsThatFail_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("bucket");
        QTest::addColumn<QString>("name");
        const QString good = QStringLiteral("来件.zip");
        QTest::newRow("no such file") << QStringLiteral("none") << QString() << QStringLiteral("b");
        QTest::newRow("a folder") << QStringLiteral(".") << QString() << QStringLiteral("b");
        QTest::newRow("a name that is taken") << good << QString() << QStringLiteral("a.zip");
        QTest::newRow("a hostile name") << good << QString() << QStringLiteral("../../evil");
        QTest::newRow("an empty name") << good << QString() << QString();
        QTest::newRow("a hostile place") << good << QStringLiteral("../x") << QStringLiteral("b");
    }

    void putsThatFail()
    {
        QFETCH(QString, file);
        QFETCH(QString, bucket);
        QFETCH(QString, name);
        QCOMPARE(put("a.zip"), 0);
        expectFailure("file.put");
        const std::string where = bucket.isEmpty() ? m_bucket : bucket.toStdString();
        QCOMPARE(Common::MongodbPut(m_database, where, m_home->path(file).toStdString(),
                                    name.toStdString()),
                 -1);
        QCOMPARE(m_home->store().list().value.size(), 1);
    }

    void rights_data()
    {
        QTest::addColumn<int>("role");
        QTest::addColumn<bool>("allowed");
        for (const Role role : allRoles())
            QTest::newRow(qPrintable(roleName(role)))
                << static_cast<int>(role) << (role == Role::Admin || role == Role::OrigFileUpdate);
    }

    void rights()
    {
        QFETCH(int, role);
        QFETCH(bool, allowed);
        recordFile(QStringLiteral("recorded.zip"));
        m_home->actAs(QStringLiteral("somebody"), {static_cast<Role>(role)});
        QCOMPARE(put("a.zip") == 0, allowed);
        QCOMPARE(hasFile(m_home->store(), QStringLiteral("a.zip")), allowed);
        QCOMPARE(Common::MongodbDel(m_database, m_bucket, "recorded.zip") == 0, allowed);
        std::string packed = "before";
        QCOMPARE(pack(packed) == 0, allowed);
        QCOMPARE(packed.empty(), !allowed);
        const QString refused = QStringLiteral("SELECT count(*) FROM events WHERE refused = 1");
        QCOMPARE(m_home->value(refused).toInt(), allowed ? 0 : 3);
    }

    void nobodyMayPut()
    {
        m_home->signOut();
        QCOMPARE(put("a.zip"), -1);
        QVERIFY(!hasFile(m_home->store(), QStringLiteral("a.zip")));
    }

    void delOnlyMarks()
    {
        recordFile(QStringLiteral("a.zip"));
        QCOMPARE(Common::MongodbDel(m_database, m_bucket, "a.zip"), 0);
        QVERIFY(hasFile(m_home->store(), QStringLiteral("a.zip")));
        QCOMPARE(marks(), 1);
        QCOMPARE(Common::MongodbDel(m_database, m_bucket, "a.zip"), 0);
        QCOMPARE(marks(), 1);
    }

    void aMarkWithoutDeletionIsUndoneAtTheNextStart()
    {
        recordFile(QStringLiteral("a.zip"));
        QCOMPARE(Common::MongodbDel(m_database, m_bucket, "a.zip"), 0);
        m_home->start();
        QCOMPARE(marks(), 0);
        QVERIFY(hasFile(m_home->store(), QStringLiteral("a.zip")));
    }

    void delOfWhatIsNotThere()
    {
        expectFailure("file.markDelete");
        QCOMPARE(Common::MongodbDel(m_database, m_bucket, "none.zip"), -1);
        recordFile(QStringLiteral("a.zip"));
        expectFailure("file.markDelete");
        QCOMPARE(Common::MongodbDel(m_database, "elsewhere", "a.zip"), -1);
        QCOMPARE(marks(), 0);
    }

    void aPackedFolderIsStored()
    {
        std::string name;
        QCOMPARE(pack(name), 0);
        QVERIFY(isGuid(QString::fromStdString(name)));
        const QString zip = m_home->path(QStringLiteral("got.zip"));
        QVERIFY(m_home->store().get(QString::fromStdString(name + ".zip"), zip, m_progress));
        const QString target = m_home->path(QStringLiteral("target"));
        QCOMPARE(unpackArchive(zip, target, LimitSettings(), m_progress).value, qint64{1});
        QVERIFY(QFileInfo(target + QStringLiteral("/料号/matrix/matrix")).isFile());
        QCOMPARE(TestInstallation::entries(m_home->staging()), QStringList());
    }

    void aFolderThatCannotBePacked()
    {
        std::string name = "before";
        expectFailure("file.packAndPut");
        QCOMPARE(
            Common::FoldersCompressSave2MongoDb(m_home->path(QStringLiteral("no")).toStdString(),
                                                m_home->staging().toStdString(), name),
            -1);
        QVERIFY(name.empty());
        expectFailure("file.packAndPut");
        const std::string folder = madeFolder();
        QCOMPARE(Common::FoldersCompressSave2MongoDb(folder, "/nowhere/at/all/", name), -1);
        QVERIFY(name.empty());
        QCOMPARE(TestInstallation::entries(m_home->staging()), QStringList());
        QVERIFY(m_home->store().list().value.isEmpty());
    }

private:
    int put(const std::string &name)
    {
        return Common::MongodbPut(m_database, m_bucket, m_file.toStdString(), name);
    }

    std::string madeFolder()
    {
        const QString folder = m_home->path(QStringLiteral("料号"));
        if (!writeFile(folder + QStringLiteral("/matrix/matrix"), "STEP {\n}\n"))
            qFatal("cannot write");
        return folder.toStdString() + "/";
    }

    int pack(std::string &name)
    {
        return Common::FoldersCompressSave2MongoDb(madeFolder(), m_home->staging().toStdString(),
                                                   name);
    }

    void recordFile(const QString &name)
    {
        QVERIFY(m_home->store().put(m_file, name, m_progress));
        StoredFileRow row;
        row.guid = newGuid();
        row.storedName = name;
        StoredFileRecords(m_home->database()).insert(row, 0, 0);
    }

    int marks()
    {
        return m_home->value(QStringLiteral("SELECT count(*) FROM file_delete_marks")).toInt();
    }

    std::unique_ptr<TestInstallation> m_home;
    QString m_file;
    std::string m_database;
    std::string m_bucket;
    NoProgress m_progress;
};

KODMS_TEST_MAIN(CommonTest, QCoreApplication)
#include "CommonTest.moc"
