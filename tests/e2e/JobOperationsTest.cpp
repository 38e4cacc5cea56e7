// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/Intake.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/e2e/DownloadUser.h"
#include "tests/e2e/ExportUser.h"
#include "tests/e2e/RobotAtWork.h"
#include "tests/e2e/SampleHouse.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTextCodec>
#include <QUrl>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::Fakes::MessageBoxProbe;
using KODMS::UI::DMS_UICommon;

/// A day at the desks, by clicks and keys on the real services: an executor gets
/// jobs, downloads them and sends one to the robot, which is a process of its own.
class JobOperationsTest : public QObject {
    Q_OBJECT

public Q_SLOTS:

    void openUrl(const QUrl &url) { m_opened << url; }

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    // In this order: each step stands on the ones before.
    void theJobsAreAssigned();
    void aTgzIsDownloaded();
    void aZipWithChineseNamesIsDownloaded();
    void aKosArchiveIsDownloaded();
    void theJobFlowDeskDownloadsToo();
    void aJobThatIsNotReadyIsNotSent();
    void theRobotTakesAJob();

private:
    struct Job {
        QString archive; ///< file name of what the customer sent
        QMap<QString, QByteArray> files;
        IntakeReceipt receipt;
    };

    void takeIn(Job &job, const QByteArray &bytes);

    QString folderOf(const Job &job) const { return m_root + job.receipt.jobName; }

    /// Downloads a job from a desk and looks at what is on the disk then.
    void download(const DeskUser &user, int row, const Job &job);

    std::unique_ptr<SampleHouse> m_house;
    QTemporaryDir m_customer;
    QString m_root;
    Job m_tgz;
    Job m_zip;
    Job m_kos;
    QList<QUrl> m_opened;
};

namespace {

const QString Executor = QStringLiteral("周执行");
const QString Login = QStringLiteral("zhou");

/// Bytes that no archive makes by chance, different for each name.
QByteArray contentOf(const QString &name)
{
    QByteArray content;
    for (int line = 0; line < 2000; ++line)
        content += name.toUtf8() + ' ' + QByteArray::number(line * 7919 % 1000) + '\n';
    return content + QByteArray("\0\xff\r\n", 4);
}

QMap<QString, QByteArray> filesNamed(const QStringList &names)
{
    QMap<QString, QByteArray> files;
    for (const QString &name : names)
        files.insert(name, contentOf(name));
    return files;
}

QByteArray tgzOf(const QMap<QString, QByteArray> &files)
{
    QVector<RawTarEntry> entries;
    for (auto file = files.cbegin(); file != files.cend(); ++file)
        entries.append({file.key().toUtf8(), file.value()});
    return gzipped(rawTar(entries));
}

/// As a Windows tool of the factory writes it: names in the system's code page and
/// no mark that would say so.
QByteArray zipOf(const QMap<QString, QByteArray> &files)
{
    QTextCodec *const codec = QTextCodec::codecForName("GB18030");
    QVector<RawZipEntry> entries;
    for (auto file = files.cbegin(); file != files.cend(); ++file)
        entries.append({codec->fromUnicode(file.key()), file.value()});
    return rawZip(entries);
}

/// The files of a folder, without the folders themselves.
QMap<QString, QByteArray> filesIn(const QString &folder)
{
    QMap<QString, QByteArray> files = treeOf(folder);
    for (auto file = files.begin(); file != files.end();)
        file = file.value() == "/" ? files.erase(file) : file + 1;
    return files;
}

QList<QVariantList> emissions(const QSignalSpy &spy)
{
    return {spy.cbegin(), spy.cend()};
}

using Expected = QList<QVariantList>;

} // namespace

void JobOperationsTest::initTestCase()
{
    m_house = std::make_unique<SampleHouse>(5);
    NewUser executor;
    executor.loginName = Login;
    executor.realName = Executor;
    executor.password = QStringLiteral("a long password");
    executor.department = 2;
    executor.post = 6;
    executor.roles =
        QStringList{QStringLiteral("show-company-name"), QStringLiteral("check-authority")};
    m_house->addAccount(executor);
    m_root = m_house->downloadFolder();
    m_house->signIn(QStringLiteral("admin"));

    m_tgz.archive = QStringLiteral("board.tgz");
    m_tgz.files = filesNamed({QStringLiteral("board.tgz"), QStringLiteral("board/matrix/matrix"),
                              QStringLiteral("board/misc/info")});
    takeIn(m_tgz, tgzOf(m_tgz.files));
    m_zip.archive = QStringLiteral("多层板.zip");
    m_zip.files = filesNamed({QStringLiteral("多层板/layer/顶层线路.gbr"),
                              QStringLiteral("多层板/layer/底层线路.gbr"),
                              QStringLiteral("多层板/说明.txt")});
    takeIn(m_zip, zipOf(m_zip.files));
    m_kos.archive = QStringLiteral("amp.kos");
    m_kos.files = filesNamed({QStringLiteral("amp/layer/amp.tgz"), QStringLiteral("amp/job.xml")});
    takeIn(m_kos, tgzOf(m_kos.files));
}

void JobOperationsTest::takeIn(Job &job, const QByteArray &bytes)
{
    IntakeRequest request;
    request.path = m_customer.filePath(job.archive);
    request.customerCode = QStringLiteral("K7Q");
    QVERIFY(writeFile(request.path, bytes));
    const auto taken = Intake::take(request);
    QVERIFY2(taken.outcome.ok, qPrintable(taken.outcome.text));
    job.receipt = taken.value;
    QCoreApplication::processEvents(); // an intake asks the desks to reload
}

void JobOperationsTest::cleanupTestCase()
{
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    m_house.reset();
}

void JobOperationsTest::init()
{
    m_opened.clear();
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "openUrl");
    m_house->signIn(Login);
}

void JobOperationsTest::theJobsAreAssigned()
{
    m_house->signIn(QStringLiteral("admin"));
    const DownloadUser admin;
    admin.pick("m_pAssignerCMB", Executor);
    QVector<int> rows;
    for (const Job *job : {&m_tgz, &m_zip, &m_kos})
        rows << admin.rowOf(DownloadUser::FlowGuid, job->receipt.flowGuid);
    admin.selectRows(rows);
    MessageBoxProbe probe;
    admin.click("m_pAssignPB");
    QCOMPARE(probe.count(), 0);
    for (int row : qAsConst(rows))
        QCOMPARE(admin.table()->item(row, DownloadUser::Executor)->text(), Executor);
}

void JobOperationsTest::download(const DeskUser &user, int row, const Job &job)
{
    QVERIFY(row >= 0);
    user.clickCell(row, user.table()->isColumnHidden(0) ? 1 : 0);
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    user.click("m_pDownloadPB");
    QCOMPARE(probe.texts(), QStringList({QStringLiteral("确认下载这些job?"),
                                         QStringLiteral("Download complete!")}));
    QCOMPARE(filesIn(folderOf(job)).keys(), job.files.keys());
    QCOMPARE(filesIn(folderOf(job)), job.files);
    const QString fetched = folderOf(job) + QLatin1Char('.') + QFileInfo(job.archive).suffix();
    QVERIFY(!QFileInfo::exists(fetched));
#if !defined(Q_OS_WIN) // where the Explorer is started, which no test waits for
    QCOMPARE(m_opened, QList<QUrl>{QUrl::fromLocalFile(folderOf(job))});
#endif
}

void JobOperationsTest::aTgzIsDownloaded()
{
    const DownloadUser user;
    user.click("m_pRefreshPB");
    QSignalSpy imported(DMS_UICommon::interface(), &DMS_UICommon::camImportRequested);
    QSignalSpy input(DMS_UICommon::interface(), &DMS_UICommon::camInputRequested);
    download(user, user.rowOf(DownloadUser::FlowGuid, m_tgz.receipt.flowGuid), m_tgz);
    QCOMPARE(emissions(imported),
             Expected({{QString(folderOf(m_tgz) + QStringLiteral("/board.tgz")),
                        m_tgz.receipt.jobName}}));
    QVERIFY(input.isEmpty());
}

void JobOperationsTest::aZipWithChineseNamesIsDownloaded()
{
    const DownloadUser user;
    user.click("m_pRefreshPB");
    QSignalSpy imported(DMS_UICommon::interface(), &DMS_UICommon::camImportRequested);
    QSignalSpy input(DMS_UICommon::interface(), &DMS_UICommon::camInputRequested);
    download(user, user.rowOf(DownloadUser::FlowGuid, m_zip.receipt.flowGuid), m_zip);
    QCOMPARE(emissions(input),
             Expected({{m_zip.receipt.jobName,
                        QString(folderOf(m_zip) + QStringLiteral("/多层板/layer"))}}));
    QVERIFY(imported.isEmpty());
}

void JobOperationsTest::aKosArchiveIsDownloaded()
{
    const DownloadUser user;
    user.click("m_pRefreshPB");
    QSignalSpy imported(DMS_UICommon::interface(), &DMS_UICommon::camImportRequested);
    QSignalSpy input(DMS_UICommon::interface(), &DMS_UICommon::camInputRequested);
    download(user, user.rowOf(DownloadUser::FlowGuid, m_kos.receipt.flowGuid), m_kos);
    QCOMPARE(emissions(imported),
             Expected({{QString(folderOf(m_kos) + QStringLiteral("/amp/layeramp.tgz")),
                        m_kos.receipt.jobName}}));
    QVERIFY(input.isEmpty());
}

/// Over what is there already: the archive's own files replace it.
void JobOperationsTest::theJobFlowDeskDownloadsToo()
{
    const ExportUser user;
    QVERIFY(writeFile(folderOf(m_tgz) + QStringLiteral("/board/misc/info"), "spoilt"));
    QSignalSpy imported(DMS_UICommon::interface(), &DMS_UICommon::camImportRequested);
    download(user, user.rowOf(ExportUser::JobName, m_tgz.receipt.jobName), m_tgz);
    QCOMPARE(imported.size(), 1);
}

void JobOperationsTest::aJobThatIsNotReadyIsNotSent()
{
    const ExportUser user;
    const int row = user.rowOf(ExportUser::JobName, m_tgz.receipt.jobName);
    user.clickCell(row, ExportUser::JobName);
    MessageBoxProbe probe;
    user.click("m_pSendRobotPB");
    QCOMPARE(probe.texts(), QStringList(QStringLiteral("此流程状态未到机器人处理")));
}

void JobOperationsTest::theRobotTakesAJob()
{
    RobotAtWork robot(*m_house, {QStringLiteral("--seconds"), QStringLiteral("0.5")});
    m_house->moveRobotTo(robot.port());
    m_house->signIn(Login);
    const ExportUser user;
    const int row = user.rowOf(ExportUser::JobName, m_kos.receipt.jobName);
    QVERIFY(row >= 0);
    QCOMPARE(user.table()->item(row, ExportUser::Status)->text(), QStringLiteral("前处理通过"));
    user.clickCell(row, ExportUser::JobName);
    MessageBoxProbe probe;
    user.click("m_pSendRobotPB");
    QCOMPARE(probe.count(), 0);
    QCOMPARE(user.table()->item(row, ExportUser::Status)->text(), QStringLiteral("前处理通过"));

    // A robot on a busy machine may take longer than the desk waits.
    const auto status = [&user, row] {
        user.click("m_pRefreshPB");
        return user.table()->item(row, ExportUser::Status)->text();
    };
    QTRY_COMPARE_WITH_TIMEOUT(status(), QStringLiteral("机器人处理中"), 30000);
    const QString result = QStringLiteral("SELECT count(*) FROM job_flows f JOIN orig_files r ON "
                                          "r.id = f.result_file_id WHERE f.job_name = '%1'")
                               .arg(m_kos.receipt.jobName);
    QTRY_COMPARE_WITH_TIMEOUT(m_house->records().number(result), 1, 30000);
    QCOMPARE(robot.stop(), 0);

    user.clickCell(row, ExportUser::JobName);
    user.click("m_pSendRobotPB");
    QCOMPARE(probe.texts(), QStringList(QStringLiteral("此流程状态未到机器人处理")));
}

KODMS_TEST_MAIN(JobOperationsTest, QApplication)
#include "JobOperationsTest.moc"
