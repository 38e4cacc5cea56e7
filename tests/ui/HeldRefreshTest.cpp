// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/common/DMS_Function.h"
#include "foundation/ui/DMS_StdCommon.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/Intake.h"
#include "services/tasks/TaskRunner.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"
#include "tests/tasks/support/TaskSteps.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QWidget>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::DMS_Function::ExtractorFileFromcompressFile;
using KODMS::UI::DMS_StdCommon;
using KODMS::UI::DMS_UICommon;

/// What a desk with windows gets from the services while it works on its rows.
class HeldRefreshTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void noTableChangesUnderTheRowsOfAnAction();
    void aRefreshOfTheWorkItselfWaitsToo();
    void aCancelledActionFetchesAndUnpacksNothingMore();

private:
    QString download(const QString &name) const
    {
        return m_home->path(QStringLiteral("download/")) + name;
    }

    void fetch(const QString &job) const
    {
        DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName(job.toStdString(),
                                                            m_storedName.toStdString(), "zip");
    }

    int unpack(const QString &job) const
    {
        return ExtractorFileFromcompressFile(download(job + QStringLiteral(".zip")).toStdWString(),
                                             L"zip",
                                             download(job + QStringLiteral("/")).toStdWString());
    }

    std::unique_ptr<TestInstallation> m_home;
    std::unique_ptr<QWidget> m_window;
    QString m_storedName;
};

void HeldRefreshTest::init()
{
    m_home = std::make_unique<TestInstallation>();
    m_home->actAsAdmin();
    IntakeRequest request;
    request.path = m_home->path(QStringLiteral("sent.zip"));
    request.customerCode = QStringLiteral("A1B");
    QVERIFY(writeFile(request.path, rawZip({{"top.gbr", "G04"}})));
    const auto receipt = Intake::take(request);
    QVERIFY2(receipt.outcome.ok, qPrintable(receipt.text()));
    m_storedName = receipt.value.storedName;
    QVERIFY(QDir().mkpath(download(QString())));
    m_window = std::make_unique<QWidget>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QTRY_VERIFY(!TaskRunner::instance().isBusy());
}

void HeldRefreshTest::cleanup()
{
    m_window.reset();
    QTRY_VERIFY(!TaskRunner::instance().isBusy());
    m_home.reset();
}

void HeldRefreshTest::noTableChangesUnderTheRowsOfAnAction()
{
    DMS_UICommon *hub = DMS_UICommon::interface();
    const QSignalSpy jobs(hub, &DMS_UICommon::refreshExportJobTable);
    const QSignalSpy files(hub, &DMS_UICommon::refreshOrigFileTable);
    fromTheEventLoop([&] {
        for (const QString &job : {QStringLiteral("one"), QStringLiteral("two")}) {
            fetch(job);
            hub->emitGobalSingal(); // another window's change is done
            showBox(100);
            QCOMPARE(unpack(job), 1);
            showBox(50);
            hub->emitGobalSingal();
        }
        QCOMPARE(jobs.size(), 0);
        QCOMPARE(files.size(), 0);
    });
    QCOMPARE(jobs.size(), 1);
    QCOMPARE(files.size(), 1);
    hub->emitGobalSingal();
    QCOMPARE(jobs.size(), 2);
}

void HeldRefreshTest::aRefreshOfTheWorkItselfWaitsToo()
{
    DMS_UICommon *hub = DMS_UICommon::interface();
    const QSignalSpy jobs(hub, &DMS_UICommon::refreshExportJobTable);
    int during = -1;
    fromTheEventLoop([&] {
        later(50, [hub] { hub->emitGobalSingal(); });
        later(150, [&] { during = jobs.size(); });
        QVERIFY(runFor(300));
    });
    QCOMPARE(during, 0);
    QCOMPARE(jobs.size(), 1);
}

void HeldRefreshTest::aCancelledActionFetchesAndUnpacksNothingMore()
{
    const NoticeLog log;
    fromTheEventLoop([&] {
        fetch(QStringLiteral("one"));
        later(600, [] { pressCancel(); });
        QVERIFY(runFor(20000).isCancelled);
        QCOMPARE(unpack(QStringLiteral("one")), -1);
        showBox(50);
        for (const QString &job : {QStringLiteral("two"), QStringLiteral("three")}) {
            fetch(job);
            QCOMPARE(unpack(job), -1);
            showBox(50);
        }
    });
    QVERIFY(QFile::exists(download(QStringLiteral("one.zip"))));
    QVERIFY(!QFile::exists(download(QStringLiteral("one"))));
    QVERIFY(!QFile::exists(download(QStringLiteral("two.zip"))));
    QCOMPARE(log.notices.size(), 1); // and no warning in the log: it would fail this test
    fromTheEventLoop([&] {
        fetch(QStringLiteral("two"));
        QCOMPARE(unpack(QStringLiteral("two")), 1);
    });
}

KODMS_TEST_MAIN(HeldRefreshTest, QApplication)
#include "HeldRefreshTest.moc"
