// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/SignIn.h"
#include "tests/e2e/DownloadUser.h"
#include "tests/e2e/ExportUser.h"
#include "tests/e2e/SampleHouse.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTableWidget>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::Fakes::MessageBoxProbe;

/// Assignment on both desks with the real services: what is clicked stands in the
/// records and in their history, and the desk finds its row again.
class AssignmentDesksTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void filesGetAnExecutor();
    void flowsGetAPreChecker();
    void anotherDeskSeesItAfterARefresh();
    void noWritesNothing();
    void theSamePersonAgainWritesNothing();
    void whoMayNotIsRefusedByTheDesk();
    void aDisabledPersonIsRefusedByTheServiceAndTold();

private:
    const RecordProbe &records() const { return m_house->records(); }

    QString jobOf(const QString &flowGuid) const;
    QString executorOf(const QString &flowGuid) const;
    QString preCheckerOf(const QString &flowGuid) const;

    /// "action: before -> after" of what was written since `event`, in order.
    QStringList historySince(int event) const;
    int lastEvent() const;

    std::unique_ptr<SampleHouse> m_house;
};

namespace {

NewUser person(const char *login, const QString &name, int department, int post)
{
    NewUser user;
    user.loginName = QString::fromLatin1(login);
    user.realName = name;
    user.password = QStringLiteral("a long password");
    user.department = department;
    user.post = post;
    return user;
}

const QString ExecutorOne = QStringLiteral("周一执行");
const QString ExecutorTwo = QStringLiteral("周二执行");
const QString CheckerOne = QStringLiteral("吴一审核");
const QString CheckerTwo = QStringLiteral("吴二审核");

} // namespace

void AssignmentDesksTest::initTestCase()
{
    m_house = std::make_unique<SampleHouse>(200);
    m_house->addAccount(person("zhou1", ExecutorOne, 2, 6));
    m_house->addAccount(person("zhou2", ExecutorTwo, 2, 6));
    m_house->addAccount(person("wu1", CheckerOne, 3, 10));
    m_house->addAccount(person("wu2", CheckerTwo, 3, 10));
}

void AssignmentDesksTest::cleanupTestCase()
{
    m_house.reset();
}

void AssignmentDesksTest::init()
{
    m_house->signIn(QStringLiteral("admin"));
}

QString AssignmentDesksTest::jobOf(const QString &flowGuid) const
{
    return records().text(
        QStringLiteral("SELECT job_name FROM job_flows WHERE guid = '%1'").arg(flowGuid));
}

QString AssignmentDesksTest::executorOf(const QString &flowGuid) const
{
    return records().text(
        QStringLiteral("SELECT u.real_name FROM orig_file_assign a JOIN job_flows f ON "
                       "f.id = a.flow_id JOIN users u ON u.id = a.executor_id "
                       "WHERE f.guid = '%1'")
            .arg(flowGuid));
}

QString AssignmentDesksTest::preCheckerOf(const QString &flowGuid) const
{
    return records().text(
        QStringLiteral("SELECT u.real_name FROM pre_check_assign a JOIN job_flows f ON "
                       "f.id = a.flow_id JOIN users u ON u.id = a.executor_id "
                       "WHERE f.guid = '%1'")
            .arg(flowGuid));
}

int AssignmentDesksTest::lastEvent() const
{
    return records().number(QStringLiteral("SELECT max(id) FROM events"));
}

QStringList AssignmentDesksTest::historySince(int event) const
{
    return records().texts(
        QStringLiteral("SELECT (CASE refused WHEN 0 THEN '' ELSE 'refused ' END) || action || ' ' "
                       "|| record_name || ': ' || before_value || ' -> ' || after_value "
                       "FROM events WHERE id > %1 ORDER BY id")
            .arg(event));
}

void AssignmentDesksTest::filesGetAnExecutor()
{
    const DownloadUser user;
    user.pick("m_pAssignerCMB", ExecutorOne);
    const QStringList guids = user.column(DownloadUser::FlowGuid);
    const QStringList before = user.column(DownloadUser::Executor);
    const QVector<int> rows{1, 4, 6};
    QStringList expected;
    QString somebody;
    for (int row : rows) {
        somebody += before.at(row);
        const char *const operation =
            before.at(row).isEmpty() ? "AssignOrigFile" : "AssignOrigFileUpdate";
        expected << QStringLiteral("assignment.%1 %2: %3 -> %4")
                        .arg(QLatin1String(operation), jobOf(guids.at(row)), before.at(row),
                             ExecutorOne);
    }
    const int event = lastEvent();
    user.selectRows(rows);
    QCOMPARE(user.selectedRows(), rows);
    MessageBoxProbe probe;
    if (!somebody.isEmpty())
        probe.answer(QMessageBox::Yes);
    user.click("m_pAssignPB");
    QCOMPARE(probe.count(), somebody.isEmpty() ? 0 : 1);
    QCOMPARE(historySince(event), expected);
    for (int row : rows) {
        QCOMPARE(executorOf(guids.at(row)), ExecutorOne);
        QCOMPARE(user.table()->item(row, DownloadUser::Executor)->text(), ExecutorOne);
    }
    QCOMPARE(user.column(DownloadUser::FlowGuid), guids);
    QCOMPARE(user.selectedRows(), QVector<int>{6});
    QCOMPARE(user.table()->currentRow(), 6);
}

void AssignmentDesksTest::flowsGetAPreChecker()
{
    const ExportUser user;
    user.pick("m_pAssignerCMB", CheckerTwo);
    const QStringList guids = user.column(ExportUser::FlowGuid);
    const QStringList names = user.column(ExportUser::JobName);
    const QStringList before = user.column(ExportUser::PreChecker);
    const QVector<int> rows{0, 2, 3, 5};
    QStringList expected;
    QString somebody;
    for (int row : rows) {
        somebody += before.at(row);
        const char *const operation =
            before.at(row).isEmpty() ? "s_PreCheckAssign" : "Update_PreCheckAssign";
        expected << QStringLiteral("assignment.%1 %2: %3 -> %4")
                        .arg(QLatin1String(operation), names.at(row), before.at(row), CheckerTwo);
    }
    const int event = lastEvent();
    user.selectRows(rows);
    MessageBoxProbe probe;
    if (!somebody.isEmpty())
        probe.answer(QMessageBox::Yes);
    user.click("m_pAssignPB");
    QCOMPARE(probe.count(), somebody.isEmpty() ? 0 : 1);
    QCOMPARE(historySince(event), expected);
    for (int row : rows) {
        QCOMPARE(preCheckerOf(guids.at(row)), CheckerTwo);
        QCOMPARE(user.table()->item(row, ExportUser::PreChecker)->text(), CheckerTwo);
    }
    QCOMPARE(user.column(ExportUser::FlowGuid), guids);
    QCOMPARE(user.table()->item(5, ExportUser::Id)->isSelected(), true);
}

void AssignmentDesksTest::anotherDeskSeesItAfterARefresh()
{
    const DownloadUser one;
    const ExportUser two;
    const QString guid = two.table()->item(9, ExportUser::FlowGuid)->text();
    one.pick("m_pAssignerCMB", ExecutorTwo);
    one.selectRows({one.rowOf(DownloadUser::FlowGuid, guid)});
    MessageBoxProbe probe;
    if (!executorOf(guid).isEmpty())
        probe.answer(QMessageBox::Yes);
    one.click("m_pAssignPB");
    QCOMPARE(executorOf(guid), ExecutorTwo);
    two.click("m_pRefreshPB");
    QCOMPARE(two.table()->item(9, ExportUser::PreProcessor)->text(), ExecutorTwo);
}

void AssignmentDesksTest::noWritesNothing()
{
    const DownloadUser user;
    const int row = user.rowOf(DownloadUser::Executor, ExecutorOne);
    QVERIFY(row >= 0);
    user.pick("m_pAssignerCMB", ExecutorTwo);
    user.selectRows({row});
    const int event = lastEvent();
    MessageBoxProbe probe;
    probe.answer(QMessageBox::No);
    user.click("m_pAssignPB");
    QCOMPARE(probe.count(), 1);
    QCOMPARE(lastEvent(), event);
    QCOMPARE(user.table()->item(row, DownloadUser::Executor)->text(), ExecutorOne);
}

void AssignmentDesksTest::theSamePersonAgainWritesNothing()
{
    const DownloadUser user;
    const int row = user.rowOf(DownloadUser::Executor, ExecutorOne);
    user.pick("m_pAssignerCMB", ExecutorOne);
    user.selectRows({row});
    const int event = lastEvent();
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    user.click("m_pAssignPB");
    QCOMPARE(lastEvent(), event);
    QCOMPARE(user.selectedRows(), QVector<int>{row});
}

void AssignmentDesksTest::whoMayNotIsRefusedByTheDesk()
{
    m_house->signIn(QStringLiteral("zhou1"));
    const ExportUser user;
    const int event = lastEvent();
    MessageBoxProbe probe;
    user.click("m_pAssignPB");
    QCOMPARE(probe.texts(), QStringList(QStringLiteral("对不起，你没有该权限！")));
    QCOMPARE(lastEvent(), event);
}

/// The combo box was filled when the desk was made; since then somebody left.
void AssignmentDesksTest::aDisabledPersonIsRefusedByTheServiceAndTold()
{
    const ExportUser user;
    user.pick("m_pAssignerCMB", CheckerOne);
    const QStringList before = user.column(ExportUser::PreChecker);
    SignIn::actAsOperator();
    QVERIFY(UserAdmin::setEnabled(QStringLiteral("wu1"), false).ok);
    m_house->signIn(QStringLiteral("admin"));
    user.selectRows({7});
    MessageBoxProbe probe;
    if (!before.at(7).isEmpty())
        probe.answer(QMessageBox::Yes);
    QSignalSpy notices(KODMS::UI::DMS_UICommon::interface(),
                       &KODMS::UI::DMS_UICommon::serviceNotice);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("disabled")));
    user.click("m_pAssignPB");
    QCOMPARE(notices.size(), 1);
    QCOMPARE(user.column(ExportUser::PreChecker), before);
}

KODMS_TEST_MAIN(AssignmentDesksTest, QApplication)
#include "AssignmentDesksTest.moc"
