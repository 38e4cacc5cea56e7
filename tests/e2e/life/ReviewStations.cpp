// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_JobCheck_Widget.h"
#include "tests/e2e/ExportUser.h"
#include "tests/e2e/life/HostUser.h"
#include "tests/e2e/life/LifeHouse.h"
#include "tests/e2e/life/LifeOfAJob.h"
#include "tests/e2e/life/People.h"
#include "tests/e2e/life/StationPictures.h"
#include "tests/e2e/life/Stations.h"
#include "tests/fakes/MessageBoxProbe.h"

#include "apps/desk/MainWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QLineEdit>
#include <QListWidget>
#include <QMap>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTextEdit>

namespace KODMS::Tests {

using Fakes::MessageBoxProbe;
using File = LifeOfAJob::File;
using UI::DMS_JobCheck_Widget;

namespace {

constexpr int PatienceMs = 60000;
const QString Delivered = QStringLiteral("机器人交付结果");
const QString Title = QStringLiteral("钻孔 D1 的孔径不一致");
const QString Description = QStringLiteral("钻孔文件是 0.30 mm，工艺要求是 0.25 mm，以哪个为准？");
const QString Answer = QStringLiteral("已与客户确认：以钻孔文件为准，0.30 mm。");

/// What verdicts make of a job, as the desks and the history call it.
const QMap<QString, QString> Statuses{{QStringLiteral("1,1"), QStringLiteral("前处理未过")},
                                      {QStringLiteral("1,2"), QStringLiteral("前处理通过")},
                                      {QStringLiteral("2,1"), QStringLiteral("机器人未过")},
                                      {QStringLiteral("2,2"), QStringLiteral("机器人通过")}};

/// The question window of the desk that is open now; null: none.
DMS_JobCheck_Widget *questionWindow(const DeskUser &flows)
{
    const auto windows = flows.desk<UI::DMS_Export_Widget>()->findChildren<DMS_JobCheck_Widget *>();
    for (auto *window : windows)
        if (window->isVisible())
            return window;
    return nullptr;
}

template <typename Part> Part *part(const QWidget *window, const char *name)
{
    return window->findChild<Part *>(QLatin1String(name));
}

QTableWidget *questions(const DeskUser &flows)
{
    return flows.control<QTableWidget>("m_pQuestionTableWidget");
}

void clickQuestion(const DeskUser &flows, int row)
{
    auto *table = questions(flows);
    table->scrollToItem(table->item(row, 1));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                      table->visualItemRect(table->item(row, 1)).center());
}

/// What somebody who asks about a hole shows of it.
QImage drillPicture()
{
    QImage picture(320, 200, QImage::Format_RGB32);
    picture.fill(QColor(0x10, 0x30, 0x18));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0xd0, 0x90, 0x30), 6));
    painter.drawLine(20, 100, 300, 100);
    painter.setBrush(QColor(0xd0, 0x90, 0x30));
    painter.drawEllipse(QPoint(160, 100), 46, 46);
    painter.setBrush(Qt::black);
    painter.drawEllipse(QPoint(160, 100), 20, 20);
    return picture;
}

/// Clicks on the job, which lists its questions.
int clickJob(const LifeOfAJob &job, const DeskUser &flows)
{
    const int row = job.rowAt(flows, ExportUser::JobName);
    if (row >= 0)
        flows.clickCell(row, ExportUser::JobName);
    return row;
}

/// As the history tells of a question.
QString aboutQuestion(const QString &content)
{
    return QStringLiteral("“%1”：%2").arg(Title, content);
}

/// As the history tells the last verdict.
QString verdictWord(const LifeOfAJob &job)
{
    static const QStringList words{QStringLiteral("未审核"), QStringLiteral("不通过"),
                                   QStringLiteral("通过")};
    return words.value(job.record(QStringLiteral("j.check_flag")).toInt());
}

/// When the job was last reviewed, as people read it; empty: never.
QString reviewTime(const LifeOfAJob &job)
{
    const QDateTime time = QDateTime::fromString(
        job.record(QStringLiteral("coalesce(f.check_time, '')")), Qt::ISODateWithMs);
    return time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

/// What a verdict makes of the job-flow desk: its row says so, and stays in hand.
void checkVerdictShown(const LifeOfAJob &job, const HostUser &reviewer, const DeskUser &flows)
{
    const int row = job.rowAt(flows, ExportUser::JobName);
    QVERIFY(row >= 0);
    QCOMPARE(flows.column(ExportUser::Status).at(row), Statuses.value(job.state()));
    flows.clickCell(row, ExportUser::JobName);
    StationPictures::take(reviewer.window(),
                          job.state() == QLatin1String("1,2") ? "station-pass" : "station-fail");
}

/// A passed result leaves the desk of those who work on jobs; who sees all still finds it.
void checkResultShown(const LifeOfAJob &job, const DeskUser &flows)
{
    QCOMPARE(job.rowAt(flows, ExportUser::JobName), -1);
    QCOMPARE(job.statusFor(People::keeper()), QStringLiteral("机器人通过"));
}

void judge(LifeOfAJob &job, bool isGood)
{
    const QString stateBefore = job.state();
    const QString verdictBefore = verdictWord(job);
    const QString timeBefore = reviewTime(job);
    const HostUser reviewer(job.house(), People::reviewer());
    const DeskUser flows = reviewer.jobFlows();
    const int row = clickJob(job, flows);
    QVERIFY(row >= 0);
    const QString statusBefore = flows.column(ExportUser::Status).at(row);
    const MessageBoxProbe boxes;
    flows.click(isGood ? "m_pJobPassPB" : "m_pJobUnpassPB");
    QCOMPARE(boxes.texts(), QStringList());
    QCOMPARE(job.state(), stateBefore.left(2) + QLatin1Char(isGood ? '2' : '1'));
    if (job.state() == QLatin1String("2,2"))
        checkResultShown(job, flows);
    else
        checkVerdictShown(job, reviewer, flows);
    QCOMPARE(job.house().takeNotices(), QStringList());
    const QString who = People::reviewer().realName;
    job.did(who, QStringLiteral("保存审核结果"),
            LifeOfAJob::change(verdictBefore, verdictWord(job)));
    job.did(who, QStringLiteral("更改状态"),
            LifeOfAJob::change(statusBefore, Statuses.value(job.state())));
    job.did(who, QStringLiteral("记录时间"), LifeOfAJob::change(timeBefore, reviewTime(job)));
}

} // namespace

void Stations::raiseQuestion(LifeOfAJob &job)
{
    const HostUser reviewer(job.house(), People::reviewer());
    const DeskUser flows = reviewer.jobFlows();
    QVERIFY(clickJob(job, flows) >= 0);
    QCOMPARE(questions(flows)->rowCount(), 0);
    flows.click("m_pCreateQuestionPB");
    auto *window = questionWindow(flows);
    QVERIFY(window);
    commitText(*part<QLineEdit>(window, "questionTitleEdit"), Title);
    auto *description = part<QPlainTextEdit>(window, "questionDescriptionEdit");
    commitText(*description, Description);
    QApplication::clipboard()->setImage(drillPicture());
    QTest::keySequence(description, QKeySequence::Paste);
    QCOMPARE(part<QListWidget>(window, "questionPictures")->count(), 1);
    StationPictures::take(*window, "station-question");
    QTest::mouseClick(part<QPushButton>(window, "questionSubmit"), Qt::LeftButton);
    QTest::keyClick(window, Qt::Key_Escape);
    QVERIFY(!window->isVisible());
    QCOMPARE(job.record(QStringLiteral("(SELECT q.title || '/' || q.check_flag FROM questions q "
                                       "WHERE q.flow_id = f.id)")),
             QString(Title + QStringLiteral("/0")));
    clickJob(job, flows);
    QCOMPARE(questions(flows)->rowCount(), 1);
    QCOMPARE(questions(flows)->item(0, 3)->text(), QStringLiteral("未审核"));
    QCOMPARE(job.house().takeNotices(), QStringList());
    job.did(People::reviewer().realName, QStringLiteral("创建问题"),
            aboutQuestion(Description + QLatin1Char(' ') +
                          job.record(QStringLiteral("(SELECT p.file_name FROM question_pictures p "
                                                    "JOIN questions q ON q.id = p.question_id "
                                                    "WHERE q.flow_id = f.id)"))));
}

void Stations::answerQuestion(LifeOfAJob &job)
{
    const HostUser executor(job.house(), People::executor());
    const DeskUser flows = executor.jobFlows();
    QVERIFY(clickJob(job, flows) >= 0);
    QCOMPARE(questions(flows)->rowCount(), 1);
    QCOMPARE(questions(flows)->item(0, 1)->text(), Title);
    clickQuestion(flows, 0);
    flows.click("m_pViewQuestionPB");
    auto *window = questionWindow(flows);
    QVERIFY(window);
    QCOMPARE(part<QListWidget>(window, "questionPictures")->count(), 1);
    auto *answer = part<QPlainTextEdit>(window, "questionAnswerEdit");
    commitText(*answer, Answer);
    StationPictures::take(*window, "station-answer");
    QApplication::setActiveWindow(window); // whose shortcut is meant
    QTest::keyClick(answer, Qt::Key_Return, Qt::ControlModifier);
    QVERIFY(part<QTextEdit>(window, "questionHistory")->toPlainText().contains(Answer));
    StationPictures::take(*window, "station-answered");
    QTest::keyClick(window, Qt::Key_Escape);
    QCOMPARE(
        job.record(QStringLiteral("(SELECT q.answer FROM questions q WHERE q.flow_id = f.id)")),
        Answer);
    QCOMPARE(job.house().takeNotices(), QStringList());
    job.did(People::executor().realName, QStringLiteral("回复问题"), aboutQuestion(Answer));
}

void Stations::resolveQuestion(LifeOfAJob &job)
{
    const HostUser reviewer(job.house(), People::reviewer());
    const DeskUser flows = reviewer.jobFlows();
    QVERIFY(clickJob(job, flows) >= 0);
    clickQuestion(flows, 0);
    flows.click("m_pResolveQuestionPB");
    QCOMPARE(questions(flows)->item(0, 3)->text(), QStringLiteral("审核通过"));
    QCOMPARE(
        job.record(QStringLiteral("(SELECT q.check_flag FROM questions q WHERE q.flow_id = f.id)")),
        QStringLiteral("2"));
    StationPictures::take(reviewer.window(), "station-resolved");
    QCOMPARE(job.house().takeNotices(), QStringList());
    job.did(People::reviewer().realName, QStringLiteral("更改问题状态"),
            aboutQuestion(QStringLiteral("未审核 → 审核通过")));
}

void Stations::fail(LifeOfAJob &job)
{
    judge(job, false);
}

void Stations::pass(LifeOfAJob &job)
{
    judge(job, true);
}

void Stations::sendToRobot(LifeOfAJob &job)
{
    const HostUser reviewer(job.house(), People::reviewer());
    const DeskUser flows = reviewer.jobFlows();
    const int row = clickJob(job, flows);
    QVERIFY(row >= 0);
    const QString statusBefore = flows.column(ExportUser::Status).at(row);
    const MessageBoxProbe boxes;
    flows.click("m_pSendRobotPB");
    QCOMPARE(boxes.texts(), QStringList());
    awaitRobot(job, statusBefore);
}

void Stations::awaitRobot(LifeOfAJob &job, const QString &statusBefore)
{
    // The robot is a program of its own, which may be slow on a busy machine.
    QTRY_COMPARE_WITH_TIMEOUT(job.state(), QStringLiteral("2,0"), PatienceMs);
    const int results = job.deeds().filter(Delivered).size();
    QTRY_COMPARE_WITH_TIMEOUT(
        job.record(QStringLiteral("(SELECT count(*) FROM events e WHERE e.record_kind = 'flow' AND "
                                  "e.record_id = f.id AND e.action = 'state.robotResult')")),
        QString::number(results + 1), PatienceMs);
    QVERIFY(!job.storedBytes(File::Result).isEmpty());
    QCOMPARE(job.statusFor(People::reviewer()), QStringLiteral("机器人处理中"));
    const HostUser reviewer(job.house(), People::reviewer());
    clickJob(job, reviewer.jobFlows());
    StationPictures::take(reviewer.window(), "station-robot");
    QCOMPARE(job.house().takeNotices(), QStringList());
    job.did(job.house().robotName(), QStringLiteral("机器人接收料号"),
            LifeOfAJob::change(statusBefore, QStringLiteral("机器人处理中")));
    job.did(job.house().robotName(), Delivered, job.name().toLower() + QStringLiteral(".zip"));
}

} // namespace KODMS::Tests
