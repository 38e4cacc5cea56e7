// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/Intake.h"
#include "services/api/Orders.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/SampleArchives.h"
#include "tests/e2e/DownloadUser.h"
#include "tests/e2e/SampleHouse.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDesktopServices>
#include <QSignalSpy>
#include <QTableWidget>
#include <QUrl>

#include <algorithm>
#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::Fakes::MessageBoxProbe;
using KODMS::UI::DMS_Download_Widget;
using KODMS::UI::DMS_UICommon;

/// A job ordered on the web, from an unpaid order to its hand-over, and what the
/// download button does for somebody who sees no files: both on the real services.
class WebJobsTest : public QObject {
    Q_OBJECT

public Q_SLOTS:

    void openUrl(const QUrl &) {}

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    // In this order: the second pays for what the first may not have.
    void anUnpaidJobIsNotDownloaded();
    void aPaidJobGoesToTheCamSideWithItsParameters();
    void anOrdinaryUserFinishesAReviewedFlow();

private:
    QString folder() const { return m_house->downloadFolder() + m_job.jobName; }

    std::unique_ptr<SampleHouse> m_house;
    QTemporaryDir m_customer;
    IntakeReceipt m_job;
};

namespace {

const QString Admin = QStringLiteral("admin");

/// The web shop writes a job's parameters past the services.
void setParameters(const DatabaseSettings &place, const QString &jobName, const QString &parameters)
{
    PlainConnection(place).run(
        QStringLiteral("INSERT INTO robot_params (job_name, params, update_time) "
                       "VALUES ('%1', '%2', '2026-01-01T00:00:00.000Z')")
            .arg(jobName, parameters));
}

} // namespace

void WebJobsTest::initTestCase()
{
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "openUrl");
    m_house = std::make_unique<SampleHouse>(200);
    m_house->signIn(Admin);
    IntakeRequest request;
    request.path = m_customer.filePath(QStringLiteral("shop.tgz"));
    request.customerCode = QStringLiteral("web");
    QVERIFY(writeFile(request.path, gzipped(rawTar({{"board.tgz", "a job"}, {"readme", "r"}}))));
    const auto taken = Intake::take(request);
    QVERIFY2(taken.outcome.ok, qPrintable(taken.outcome.text));
    m_job = taken.value;
    QCoreApplication::processEvents(); // an intake asks the desks to reload
}

void WebJobsTest::cleanupTestCase()
{
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    m_house.reset();
}

void WebJobsTest::anUnpaidJobIsNotDownloaded()
{
    m_house->signIn(Admin);
    const DownloadUser user;
    const int row = user.rowOf(DownloadUser::FlowGuid, m_job.flowGuid);
    QVERIFY(row >= 0);
    user.clickCell(row, 0);
    const MessageBoxProbe probe;
    user.click("m_pDownloadPB");
    QCOMPARE(probe.texts(), QStringList(QStringLiteral("此流程状态未付款")));
    QVERIFY(!QFileInfo::exists(folder()));
}

void WebJobsTest::aPaidJobGoesToTheCamSideWithItsParameters()
{
    m_house->signIn(Admin);
    const Outcome paid = Orders::pay(m_job.jobName);
    QVERIFY2(paid.ok, qPrintable(paid.text));
    const QString parameters = QStringLiteral("layers=4|mode=快");
    setParameters(m_house->place(), m_job.jobName, parameters);
    const DownloadUser user;
    user.clickCell(user.rowOf(DownloadUser::FlowGuid, m_job.flowGuid), 0);
    QSignalSpy imported(DMS_UICommon::interface(), &DMS_UICommon::camImportRequested);
    QSignalSpy heard(user.desk<DMS_Download_Widget>(), &DMS_Download_Widget::newWebItemNameGetted);
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    user.click("m_pDownloadPB");
    QCOMPARE(probe.texts().last(), QStringLiteral("Download complete!"));
    QCOMPARE(imported.size(), 1);
    QCOMPARE(imported.first().at(0).toString(),
             QString(folder() + QStringLiteral("/board.tgz|") + parameters));
    QCOMPARE(imported.first().at(1).toString(), m_job.jobName);
    QCOMPARE(heard.size(), 1);
    QCOMPARE(heard.first().first().toString(), m_job.jobName);
}

void WebJobsTest::anOrdinaryUserFinishesAReviewedFlow()
{
    m_house->signIn(QStringLiteral("user"));
    const DownloadUser user;
    const QString reviewed =
        QStringLiteral("SELECT job_name FROM job_flows WHERE flow_status = 2 AND check_flag = 2");
    const QStringList candidates = m_house->records().texts(reviewed);
    const QStringList shown = user.column(DownloadUser::HistoryJobName);
    const auto row = std::find_if(shown.cbegin(), shown.cend(),
                                  [&](const QString &job) { return candidates.contains(job); });
    QVERIFY(row != shown.cend());
    user.clickCell(static_cast<int>(row - shown.cbegin()), DownloadUser::HistoryJobName);
    const MessageBoxProbe probe;
    user.click("m_pDownloadPB");
    QCOMPARE(probe.texts(), QStringList());
    const QString state = QStringLiteral(
        "SELECT flow_status || ',' || check_flag FROM job_flows WHERE job_name = '%1'");
    QCOMPARE(m_house->records().text(state.arg(*row)), QStringLiteral("3,2"));
    QVERIFY(!QFileInfo::exists(m_house->downloadFolder() + *row));
}

KODMS_TEST_MAIN(WebJobsTest, QApplication)
#include "WebJobsTest.moc"
