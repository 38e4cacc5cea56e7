// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Backup.h"
#include "services/api/Intake.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"
#include "services/api/StoreCheck.h"
#include "services/archive/Unpacker.h"
#include "services/imports/JobImport.h"
#include "tests/api/support/ListMaker.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/odbpp/support/JobFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestMain.h"
#include "tests/tables/support/TableReaders.h"

#include <QDir>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

/// More than Windows takes by default, in parts that every file system takes.
QString deepFolder()
{
    return QString(QString(50, QLatin1Char('d')) + QStringLiteral("料号/")).repeated(6) +
           QStringLiteral("底");
}

} // namespace

/// The whole work in places that are hard to name: a user's folders with a Chinese name and a
/// blank, and folders of more than 260 characters.
class FarPlacesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    /// The records that each installation begins with, in a place that stays.
    void initTestCase() { const TestInstallation first; }

    void init();
    void cleanup();

    void takesInAndFetches_data() { places(); }

    void takesInAndFetches();

    void packsAFolder_data() { places(); }

    void packsAFolder();

    void importsJobs_data() { places(); }

    void importsJobs();

    void writesLists_data() { places(); }

    void writesLists();

    void backsUpAndRestores_data() { places(); }

    void backsUpAndRestores();

private:
    static void places()
    {
        QTest::addColumn<QString>("place");
        QTest::newRow("Chinese and a blank") << QStringLiteral("王 工/料号 库，一");
        QTest::newRow("more than 260 characters") << deepFolder();
    }

    /// The installation, and the folder in which its users have their files.
    void settle(const QString &place);

    QString path(const char *below) const { return m_folder + QString::fromUtf8(below); }

    IntakeReceipt taken(const QString &path);
    /// What is stored under the name, unpacked.
    QMap<QString, QByteArray> fetched(const QString &storedName);
    Outcome import(const QString &path, const QString &flowGuid);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<TestInstallation> m_house;
    QString m_folder;
    NoProgress m_progress;
};

void FarPlacesTest::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QFETCH(QString, place);
    settle(place);
}

void FarPlacesTest::cleanup()
{
    m_house.reset();
}

/// The records stay out of what is too long: their engine takes what the system takes by default.
void FarPlacesTest::settle(const QString &place)
{
    m_folder = m_dir->filePath(place) + QLatin1Char('/');
    QVERIFY(QDir().mkpath(m_folder + QStringLiteral("取回")));
    const bool isLong = m_folder.size() > 260;
    const TemporaryFolder elsewhere(isLong ? QDir::tempPath() : m_folder);
    m_house = std::make_unique<TestInstallation>();
    if (isLong) {
        Configuration configuration = Configuration::load(m_house->iniPath()).value;
        configuration.fileStore.root = path("库");
        configuration.paths.staging = path("暂存/");
        configuration.paths.download = path("下载/");
        QVERIFY(configuration.save());
        m_house->start();
    } else {
        QVERIFY2(m_house->iniPath().startsWith(m_folder), qPrintable(m_house->iniPath()));
    }
    m_house->actAsAdmin();
}

IntakeReceipt FarPlacesTest::taken(const QString &path)
{
    IntakeRequest request;
    request.path = path;
    request.customerCode = QStringLiteral("A1B");
    const auto receipt = Intake::take(request, &m_progress);
    if (!receipt)
        qWarning("%s", qPrintable(receipt.text()));
    return receipt.value;
}

QMap<QString, QByteArray> FarPlacesTest::fetched(const QString &storedName)
{
    const QString archive = path("取回/板 一");
    const QString folder = path("解开/甲");
    const Outcome got = m_house->store().get(storedName, archive, m_progress);
    const auto unpacked =
        got ? unpackArchive(archive, folder, {}, m_progress) : Result<qint64>(got);
    if (!unpacked)
        qWarning("%s", qPrintable(unpacked.text()));
    return treeOf(folder);
}

Outcome FarPlacesTest::import(const QString &path, const QString &flowGuid)
{
    const auto read = ReadJob::at(path, LimitSettings(), m_progress);
    if (!read)
        return read.outcome;
    JobImport run(m_house->runtime(), flowGuid, ImportKind::PreparedJob, read.value);
    if (Outcome may = run.mayBegin(); !may)
        return may;
    if (Outcome stored = run.store(m_progress); !stored)
        return stored;
    return run.record();
}

void FarPlacesTest::takesInAndFetches()
{
    const QByteArray archive = tgzOf(boardFiles());
    QVERIFY(writeFile(path("发来/板 一.tgz"), archive));
    const IntakeReceipt receipt = taken(path("发来/板 一.tgz"));
    QVERIFY(!receipt.storedName.isEmpty());
    writeJob(path("写下"), boardFiles());
    QVERIFY(fetched(receipt.storedName) == treeOf(path("写下")));
    QVERIFY(m_house->store().verify(receipt.storedName, m_progress));
    SignIn::actAsOperator();
    const auto checked = StoreCheck::check({});
    QVERIFY(checked && checked.value.isClean());
    QVERIFY(m_house->store().remove(receipt.storedName));
    QVERIFY(m_house->store().list().value.isEmpty());
    QVERIFY(TestInstallation::entries(m_house->staging()).isEmpty());
}

void FarPlacesTest::packsAFolder()
{
    writeJob(path("发来"), boardFiles());
    const IntakeReceipt receipt = taken(path("发来/board"));
    QVERIFY(receipt.storedName.endsWith(QStringLiteral(".zip")));
    auto tree = fetched(receipt.storedName);
    QVERIFY(!tree.isEmpty());
    if (tree.contains(QStringLiteral("board")))
        QVERIFY(tree == treeOf(path("发来")));
    else
        QVERIFY(tree == treeOf(path("发来/board")));
    QVERIFY(TestInstallation::entries(m_house->staging()).isEmpty());
}

void FarPlacesTest::importsJobs()
{
    QVERIFY(writeFile(path("发来/板 一.tgz"), tgzOf(boardFiles())));
    const IntakeReceipt receipt = taken(path("发来/板 一.tgz"));
    const Outcome archive = import(path("发来/板 一.tgz"), receipt.flowGuid);
    QVERIFY2(archive, qPrintable(archive.cause));
    writeJob(path("夹"), boardFiles());
    const Outcome folder = import(path("夹/board"), receipt.flowGuid);
    QVERIFY2(folder, qPrintable(folder.cause));
    QCOMPARE(m_house->value(QStringLiteral("SELECT feature_count FROM jobs")).toInt(), 550);
    QCOMPARE(m_house->store().list().value.size(), 3);
}

void FarPlacesTest::writesLists()
{
    QVERIFY(writeFile(path("发来/板 一.tgz"), tgzOf(boardFiles())));
    const QString job = taken(path("发来/板 一.tgz")).jobName;
    const ShownSearch all = flowSearch("KoJobName", "");
    for (const auto format : {ListExport::Format::Csv, ListExport::Format::Xlsx}) {
        const bool isCsv = format == ListExport::Format::Csv;
        const QString list =
            path("取回/清单 一") + (isCsv ? QStringLiteral(".csv") : QStringLiteral(".xlsx"));
        for (int round = 0; round < 2; ++round) { // the second replaces
            const auto written = ListExport::flows(all, flowColumns(), list, format, &m_progress);
            QVERIFY2(written, qPrintable(written.outcome.cause));
            QCOMPARE(written.value.rows, 1);
            QCOMPARE((isCsv ? readCsv(list) : readSheet(list)).rows.value(1).value(0), job);
        }
    }
    QCOMPARE(TestInstallation::entries(path("取回")).size(), 2);
}

void FarPlacesTest::backsUpAndRestores()
{
    QVERIFY(writeFile(path("发来/板 一.tgz"), tgzOf(boardFiles())));
    const QString stored = taken(path("发来/板 一.tgz")).storedName;
    const QString backup = path("取回/备份 一.tar");
    const auto made = Backup::backup(backup, &m_progress);
    QVERIFY2(made, qPrintable(made.outcome.cause));
    QCOMPARE(made.value.files, qint64{1});
    QVERIFY(Backup::verify(backup, &m_progress));
    m_house->stop();
    Configuration next =
        Configuration::defaultsFor(m_house->path(QStringLiteral("新 一/kodms.ini")));
    next.fileStore.root = path("新库");
    next.paths.staging = path("新暂存/");
    QVERIFY(next.save());
    const auto restored = Backup::restore(next.filePath, backup, &m_progress);
    QVERIFY2(restored, qPrintable(restored.outcome.cause));
    const Outcome started = ServiceRuntime::instance().start(next.filePath);
    QVERIFY2(started, qPrintable(started.cause));
    QVERIFY(m_house->store().verify(stored, m_progress));
    SignIn::actAsOperator();
    const auto checked = StoreCheck::check({});
    QVERIFY(checked && checked.value.isClean());
}

KODMS_TEST_MAIN(FarPlacesTest, QCoreApplication)
#include "FarPlacesTest.moc"
