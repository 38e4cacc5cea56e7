// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_JobCompressBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_OrigFilesBll.h"
#include "services/records/Guid.h"
#include "services/records/bll/FlowRecords.h"
#include "services/records/bll/StoredFileRecords.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

using namespace KODMS;
using namespace KODMS::DataLib;
using Services::Role;
using Tests::TestJob;

/// Recording, replacing and deleting original files.
class FileChangesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aReplacementMovesFlowAndRow();
    void aKosReplacementMovesTheFlowOn();
    void aReplacementWhosePutFailedChangesNothing();
    void aFailedKosReplacementDoesNotUseTheOneBefore();
    void aLaterVerdictIsNotHeldByAFailedReplacement();
    void aFolderHasNoType();
    void recordingIsRefused_data();
    void recordingIsRefused();
    void flowAndRowMoveTogetherOrNotAtAll();
    void unknownOrForeignFilesAreRefused_data();
    void unknownOrForeignFilesAreRefused();
    void theRowTakesOnlyWhatIsStoredAndRecorded_data();
    void theRowTakesOnlyWhatIsStoredAndRecorded();
    void lastImportTakesAGuidOrAStoredName();
    void deletionRemovesRecordThenBody();
    void deletionKeepsWhatAnotherFlowUses();
    void deletionIsRefused_data();
    void deletionIsRefused();
    void aBodyThatStaysBehindIsMarked();
    void whatFollowsAChangeLetsNoExceptionOut();
    void deletionOfARowWithoutFile();

private:
    void expectFailure(const std::function<bool()> &call, const char *logged);
    bool input(const std::string &guid, const std::string &storedName, const std::string &type);
    bool replaceBy(const std::string &guid, const std::string &storedName, const std::string &type);

    Services::FlowRow flow()
    {
        return *Services::FlowRecords(m_home.database()).byId(m_job.flowId);
    }

    QVariant row(const char *column)
    {
        return m_home.get(QStringLiteral("job_compress"), QString::fromLatin1(column), m_job.rowId);
    }

    Tests::RecordsHome m_home;
    TestJob m_job;
    int m_user = 0;
};

void FileChangesTest::init()
{
    m_home.reset();
    m_user = m_home.addUser(QStringLiteral("files"), {Role::OrigFileUpdate});
    m_job = m_home.addJob();
    m_home.signIn(m_user);
}

void FileChangesTest::expectFailure(const std::function<bool()> &call, const char *logged)
{
    const QString before = m_home.dump();
    Tests::NoticeLog log;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString::fromUtf8(logged)));
    QVERIFY(!call());
    QCOMPARE(m_home.dump(), before);
    QCOMPARE(log.notices.size(), 1);
}

bool FileChangesTest::input(const std::string &guid, const std::string &storedName,
                            const std::string &type)
{
    return BLL::Odbpp_OrigFilesBll().inputOrigFile(guid, "board rev b", storedName, type, "a1b", 0,
                                                   m_user);
}

/// The calls of a replacement, in the order in which the replacing window makes
/// them, none of which looks at a result.
bool FileChangesTest::replaceBy(const std::string &guid, const std::string &storedName,
                                const std::string &type)
{
    BLL::Odbpp_JobFlowBll flows;
    bool all = input(guid, storedName, type);
    all &= flows.UpdateOrigFileGuid(guid, m_job.flowGuid);
    if (type == "kos") {
        all &= flows.UpdateLastOdbppImportMongoFsGuid(guid, m_job.flowGuid);
        all &= flows.UpdateState(m_user, 1, 2, m_job.flowGuid);
    }
    all &= BLL::Odbpp_JobCompressBll().UpdateZipUUID_OrigName(m_job.rowId, storedName, m_user,
                                                              "new name");
    return all;
}

void FileChangesTest::aReplacementMovesFlowAndRow()
{
    m_home.files().names.insert(QStringLiteral("n.tgz"));
    const std::string guid = Services::newGuid().toStdString();
    QVERIFY(replaceBy(guid, "n.tgz", "tgz"));
    QCOMPARE(flow().origStoredName, QStringLiteral("n.tgz"));
    QCOMPARE(flow().origFileGuid.toStdString(), guid);
    QCOMPARE(row("orig_file_id").toInt(), flow().origFileId);
    QCOMPARE(row("orig_name").toString(), QStringLiteral("new name"));
    QCOMPARE(row("update_user_id").toInt(), m_user);
    QVERIFY((flow().state == Services::FlowState{0, 0}));
    const auto file =
        Services::StoredFileRecords(m_home.database()).byStoredName(QStringLiteral("n.tgz"));
    QCOMPARE(file->baseName, QStringLiteral("board rev b"));
    QCOMPARE(file->customerCode, QStringLiteral("A1B"));
    QVERIFY(m_home.files().names.contains(QString::fromStdString(m_job.storedName)));
}

void FileChangesTest::aKosReplacementMovesTheFlowOn()
{
    m_home.files().names.insert(QStringLiteral("n.kos"));
    QVERIFY(replaceBy(Services::newGuid().toStdString(), "n.kos", "kos"));
    QVERIFY((flow().state == Services::FlowState{1, 2}));
    QCOMPARE(flow().importStoredName, QStringLiteral("n.kos"));
}

void FileChangesTest::aReplacementWhosePutFailedChangesNothing()
{
    const QString before = m_home.dump();
    for (int i = 0; i < 4; ++i)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("stored")));
    QVERIFY(!replaceBy(Services::newGuid().toStdString(), "missing.kos", "kos"));
    QCOMPARE(m_home.dump(), before);
}

void FileChangesTest::aFailedKosReplacementDoesNotUseTheOneBefore()
{
    m_home.files().names.insert(QStringLiteral("n.kos"));
    QVERIFY(replaceBy(Services::newGuid().toStdString(), "n.kos", "kos"));
    m_home.set(QStringLiteral("job_flows"), QStringLiteral("flow_status"), 2, m_job.flowId);
    const QString before = m_home.dump();
    for (int i = 0; i < 4; ++i)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("stored")));
    QVERIFY(!replaceBy(Services::newGuid().toStdString(), "missing.kos", "kos"));
    QCOMPARE(m_home.dump(), before);
    m_home.files().names.insert(QStringLiteral("second.kos"));
    QVERIFY(replaceBy(Services::newGuid().toStdString(), "second.kos", "kos"));
    QVERIFY((flow().state == Services::FlowState{1, 2}));
}

void FileChangesTest::aLaterVerdictIsNotHeldByAFailedReplacement()
{
    const int admin = m_home.addUser(QStringLiteral("admin"), {Role::Admin});
    m_user = admin;
    m_home.signIn(admin);
    for (int i = 0; i < 4; ++i)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("stored")));
    QVERIFY(!replaceBy(Services::newGuid().toStdString(), "missing.kos", "kos"));
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(admin, 1, 0, m_job.flowGuid));
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(admin, 1, 2, m_job.flowGuid));
}

void FileChangesTest::aFolderHasNoType()
{
    m_home.files().names.insert(QStringLiteral("folder.zip"));
    QVERIFY(input(Services::newGuid().toStdString(), "folder.zip", ""));
    const auto file =
        Services::StoredFileRecords(m_home.database()).byStoredName(QStringLiteral("folder.zip"));
    QVERIFY(file->fileType.isEmpty());
    QCOMPARE(m_home.lastEvent()[QStringLiteral("record_name")].toString(),
             QStringLiteral("folder.zip"));
}

void FileChangesTest::recordingIsRefused_data()
{
    QTest::addColumn<QByteArray>("guid");
    QTest::addColumn<QByteArray>("baseName");
    QTest::addColumn<QByteArray>("storedName");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("customer");
    QTest::addColumn<QByteArray>("logged");
    const QByteArray guid = Services::newGuid().toUtf8();
    const auto add = [&](const char *name, const QByteArray &g, const QByteArray &base,
                         const QByteArray &stored, const QByteArray &type,
                         const QByteArray &customer, const char *logged) {
        QTest::newRow(name) << g << base << stored << type << customer << QByteArray(logged);
    };
    add("not in the store", guid, "b", "missing.zip", "zip", "A1B", "no file is stored");
    add("a path for a name", guid, "b", "../../etc/passwd", "", "A1B", "no file is stored");
    add("an empty name", guid, "b", "", "", "A1B", "no file is stored");
    add("NUL in the name", guid, "b", QByteArray("n.zip\0x", 7), "zip", "A1B", "NUL");
    add("invalid UTF-8 in the base name", guid, "\xff", "n.zip", "zip", "A1B", "not UTF-8");
    add("1 MB base name", guid, QByteArray(1000000, 'x'), "n.zip", "zip", "A1B", "too long");
    add("1 MB type", guid, "b", "n.zip", QByteArray(1000000, 'x'), "A1B", "too long");
    add("unknown customer", guid, "b", "n.zip", "zip", "ZZZ", "no such customer");
    add("empty GUID", "", "b", "n.zip", "zip", "A1B", "not a GUID");
    add("GUID in capitals", guid.toUpper(), "b", "n.zip", "zip", "A1B", "not a GUID");
}

void FileChangesTest::recordingIsRefused()
{
    QFETCH(QByteArray, guid);
    QFETCH(QByteArray, baseName);
    QFETCH(QByteArray, storedName);
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, customer);
    QFETCH(QByteArray, logged);
    m_home.files().names.insert(QStringLiteral("n.zip"));
    expectFailure(
        [&] {
            return BLL::Odbpp_OrigFilesBll().inputOrigFile(
                guid.toStdString(), baseName.toStdString(), storedName.toStdString(),
                type.toStdString(), customer.toStdString(), 0, m_user);
        },
        logged.constData());
}

void FileChangesTest::flowAndRowMoveTogetherOrNotAtAll()
{
    const std::string guid = m_home.addFile(QStringLiteral("n.zip"), QStringLiteral("zip"));
    Tests::PlainConnection(m_home.settings())
        .refuse(QStringLiteral("UPDATE ON job_compress"), QStringLiteral("stopped"));
    expectFailure([&] { return BLL::Odbpp_JobFlowBll().UpdateOrigFileGuid(guid, m_job.flowGuid); },
                  "stopped");
    QCOMPARE(flow().origFileId, m_job.fileId);
    QCOMPARE(m_home.events(), 0);
}

void FileChangesTest::unknownOrForeignFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("logged");
    QTest::newRow("unknown GUID") << Services::newGuid().toUtf8()
                                  << QByteArray("no such stored file");
    QTest::newRow("empty") << QByteArray() << QByteArray("no such stored file");
    QTest::newRow("another customer's file")
        << QByteArray("foreign") << QByteArray("of customer web");
}

void FileChangesTest::unknownOrForeignFilesAreRefused()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, logged);
    const std::string foreign =
        m_home.addFile(QStringLiteral("web.zip"), QStringLiteral("zip"), QStringLiteral("web"));
    const std::string guid = file == "foreign" ? foreign : file.toStdString();
    BLL::Odbpp_JobFlowBll service;
    expectFailure([&] { return service.UpdateOrigFileGuid(guid, m_job.flowGuid); }, logged);
    expectFailure([&] { return service.UpdateLastOdbppImportMongoFsGuid(guid, m_job.flowGuid); },
                  logged);
}

void FileChangesTest::theRowTakesOnlyWhatIsStoredAndRecorded_data()
{
    QTest::addColumn<int>("rowOffset");
    QTest::addColumn<QByteArray>("storedName");
    QTest::addColumn<QByteArray>("origName");
    QTest::addColumn<QByteArray>("logged");
    const auto add = [](const char *name, int offset, const char *stored, const QByteArray &orig,
                        const char *logged) {
        QTest::newRow(name) << offset << QByteArray(stored) << orig << QByteArray(logged);
    };
    add("unknown row", 50, "n.zip", "x", "no row");
    add("not recorded", 0, "unrecorded.zip", "x", "no such file is stored and recorded");
    add("recorded, but not in the store", 0, "lost.zip", "x",
        "no such file is stored and recorded");
    add("another customer's", 0, "web.zip", "x", "of customer web");
    add("name with NUL", 0, "n.zip", QByteArray("a\0b", 3), "NUL");
    add("name too long", 0, "n.zip", QByteArray(501, 'x'), "too long");
}

void FileChangesTest::theRowTakesOnlyWhatIsStoredAndRecorded()
{
    QFETCH(int, rowOffset);
    QFETCH(QByteArray, storedName);
    QFETCH(QByteArray, origName);
    QFETCH(QByteArray, logged);
    const QString zip = QStringLiteral("zip");
    m_home.files().names.insert(QStringLiteral("unrecorded.zip"));
    m_home.addFile(QStringLiteral("n.zip"), zip);
    m_home.addFile(QStringLiteral("lost.zip"), zip);
    m_home.addFile(QStringLiteral("web.zip"), zip, QStringLiteral("web"));
    m_home.files().names.remove(QStringLiteral("lost.zip"));
    expectFailure(
        [&] {
            return BLL::Odbpp_JobCompressBll().UpdateZipUUID_OrigName(
                m_job.rowId + rowOffset, storedName.toStdString(), m_user, origName.toStdString());
        },
        logged.constData());
}

void FileChangesTest::lastImportTakesAGuidOrAStoredName()
{
    const std::string guid = m_home.addFile(QStringLiteral("a.tgz"), QStringLiteral("tgz"));
    m_home.addFile(QStringLiteral("b.tgz"), QStringLiteral("tgz"));
    BLL::Odbpp_JobFlowBll service;
    QVERIFY(service.UpdateLastOdbppImportMongoFsGuid(guid, m_job.flowGuid));
    QCOMPARE(flow().importStoredName, QStringLiteral("a.tgz"));
    QVERIFY(service.UpdateLastOdbppImportMongoFsGuid("b.tgz", m_job.flowGuid));
    QCOMPARE(flow().importStoredName, QStringLiteral("b.tgz"));
    expectFailure([&] { return service.UpdateOrigFileGuid("b.tgz", m_job.flowGuid); },
                  "no such stored file"); // an original file goes by its GUID alone
}

void FileChangesTest::deletionRemovesRecordThenBody()
{
    m_home.set(QStringLiteral("job_flows"), QStringLiteral("last_import_file_id"), m_job.fileId,
               m_job.flowId);
    QVERIFY(BLL::Odbpp_JobCompressBll().DelOrigFile(m_job.rowId, m_job.storedName, m_job.flowGuid));
    QVERIFY(!row("id").isValid());
    QCOMPARE(flow().origFileId, 0);
    QCOMPARE(flow().importFileId, 0);
    QVERIFY(
        !m_home.get(QStringLiteral("orig_files"), QStringLiteral("id"), m_job.fileId).isValid());
    QCOMPARE(m_home.files().removed, QStringList{QString::fromStdString(m_job.storedName)});
    QCOMPARE(m_home.one(QStringLiteral("SELECT count(*) AS value FROM file_delete_marks")).toInt(),
             0);
    QCOMPARE(m_home.lastEvent()[QStringLiteral("action")].toString(),
             QStringLiteral("file.DelOrigFile"));
}

void FileChangesTest::deletionKeepsWhatAnotherFlowUses()
{
    const TestJob other = m_home.addJob();
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateOrigFileGuid(m_job.fileGuid, other.flowGuid));
    QVERIFY(BLL::Odbpp_JobCompressBll().DelOrigFile(m_job.rowId, m_job.storedName, m_job.flowGuid));
    QVERIFY(m_home.files().removed.isEmpty());
    QVERIFY(m_home.get(QStringLiteral("orig_files"), QStringLiteral("id"), m_job.fileId).isValid());
    QVERIFY(!row("id").isValid());
}

void FileChangesTest::deletionIsRefused_data()
{
    QTest::addColumn<int>("rowOffset");
    QTest::addColumn<QByteArray>("uuid");
    QTest::addColumn<bool>("otherFlow");
    QTest::addColumn<QByteArray>("logged");
    QTest::newRow("unknown row") << 50 << QByteArray() << false << QByteArray("no row");
    QTest::newRow("another flow's GUID") << 0 << QByteArray() << true << QByteArray("another flow");
    QTest::newRow("another file in the row") << 0 << QByteArray("old.zip") << false << QByteArray();
}

void FileChangesTest::deletionIsRefused()
{
    QFETCH(int, rowOffset);
    QFETCH(QByteArray, uuid);
    QFETCH(bool, otherFlow);
    QFETCH(QByteArray, logged);
    const TestJob other = m_home.addJob();
    const auto call = [&] {
        return BLL::Odbpp_JobCompressBll().DelOrigFile(
            m_job.rowId + rowOffset, uuid.isEmpty() ? m_job.storedName : uuid.toStdString(),
            otherFlow ? other.flowGuid : m_job.flowGuid);
    };
    if (!logged.isEmpty()) {
        expectFailure(call, logged.constData());
    } else {
        QVERIFY(!call());
        QCOMPARE(m_home.refusals(), 1);
    }
    QVERIFY(m_home.files().removed.isEmpty());
}

void FileChangesTest::aBodyThatStaysBehindIsMarked()
{
    m_home.files().failure = QStringLiteral("disk gone");
    Tests::NoticeLog log;
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("stayed behind: disk gone")));
    QVERIFY(BLL::Odbpp_JobCompressBll().DelOrigFile(m_job.rowId, m_job.storedName, m_job.flowGuid));
    QCOMPARE(log.notices.size(), 1);
    QVERIFY(!row("id").isValid());
    QCOMPARE(m_home
                 .one(QStringLiteral("SELECT stored_name AS value FROM file_delete_marks "
                                     "WHERE final = 1"))
                 .toString()
                 .toStdString(),
             m_job.storedName);
}

void FileChangesTest::whatFollowsAChangeLetsNoExceptionOut()
{
    m_home.files().throws = true;
    Tests::NoticeLog log;
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("after the change: no memory left")));
    QVERIFY(BLL::Odbpp_JobCompressBll().DelOrigFile(m_job.rowId, m_job.storedName, m_job.flowGuid));
    m_home.files().throws = false;
    QCOMPARE(log.notices.size(), 1);
    QVERIFY(!row("id").isValid());
    QCOMPARE(m_home.one(QStringLiteral("SELECT count(*) AS value FROM file_delete_marks")).toInt(),
             1);
}

void FileChangesTest::deletionOfARowWithoutFile()
{
    m_home.set(QStringLiteral("job_compress"), QStringLiteral("orig_file_id"), {}, m_job.rowId);
    QVERIFY(BLL::Odbpp_JobCompressBll().DelOrigFile(m_job.rowId, "", m_job.flowGuid));
    QVERIFY(!row("id").isValid());
    QVERIFY(m_home.files().removed.isEmpty());
}

KODMS_TEST_MAIN(FileChangesTest, QCoreApplication)

#include "FileChangesTest.moc"
