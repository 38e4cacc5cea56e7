// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/QuestionChanges.h"

#include "foundation/bll/Odbpp_OrigFilesBll.h"
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "services/records/Guid.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

using namespace KODMS;
using namespace KODMS::Services;
using Tests::TestJob;

Q_DECLARE_METATYPE(KODMS::Services::NewQuestion)

/// Raising, reading and answering questions.
class QuestionChangesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aQuestionIsStoredWithItsPicturesAndAudited();
    void theDeskListsIt();
    void aPicturesNameIsShownAsOneLine();
    void whatCannotBeStoredIsNotRaised_data();
    void whatCannotBeStoredIsNotRaised();
    void nobodyRaisesForAnother();
    void mayRaiseTellsTheJob();
    void mayRaiseRefusesOthersJobs();
    void aPageTellsEverythingInOrder();
    void aQuestionFromBeforeTheAudit();
    void aPageIsForWhoeverHasTheFlow();
    void aQuestionThatIsGone();
    void answerAndStateAreOneStep();
    void anAnswerAloneKeepsTheState();
    void aStateAloneKeepsTheAnswer();
    void anAnswerThatCannotBeStored_data();
    void anAnswerThatCannotBeStored();
    void whoeverWasOvertakenIsTold();
    void aPictureIsNoOriginalFile();

private:
    NewQuestion question() const;
    int raised();
    QuestionPage page(int id);

    QVariant one(const char *sql) { return m_home.one(QString::fromUtf8(sql)); }

    Outcome answer(int id, int version, const QString &text, int flag);

    Tests::RecordsHome m_home;
    TestJob m_job;
    int m_user = 0;
    bool m_isOvertaken = false;
};

void QuestionChangesTest::init()
{
    m_home.reset();
    m_user = m_home.addUser(QStringLiteral("admin"), {Role::Admin});
    m_job = m_home.addJob(1, 0);
    m_home.signIn(m_user);
    m_home.files().names << QStringLiteral("a.png") << QStringLiteral("b.jpeg");
}

NewQuestion QuestionChangesTest::question() const
{
    NewQuestion question;
    question.flowId = m_job.flowId;
    question.userId = m_user;
    question.title = QStringLiteral("孔径");
    question.description = QStringLiteral("第三层\n偏小");
    question.pictures = {{QStringLiteral("a.png"), QStringLiteral("截图.png")},
                         {QStringLiteral("b.jpeg"), QStringLiteral("b.jpeg")}};
    return question;
}

int QuestionChangesTest::raised()
{
    const auto id = QuestionChanges::raise(question());
    if (!id)
        qFatal("%s", qPrintable(id.text()));
    return id.value;
}

QuestionPage QuestionChangesTest::page(int id)
{
    const auto page = QuestionChanges::read(id);
    if (!page)
        qFatal("%s", qPrintable(page.text()));
    return page.value;
}

Outcome QuestionChangesTest::answer(int id, int version, const QString &text, int flag)
{
    return QuestionChanges::answer({id, m_user, version, text, flag}, m_isOvertaken);
}

void QuestionChangesTest::aQuestionIsStoredWithItsPicturesAndAudited()
{
    const int id = raised();
    QCOMPARE(one("SELECT title || '/' || description || '/' || check_flag || '/' || flow_id || '/' "
                 "|| create_user_id AS value FROM questions")
                 .toString(),
             QStringLiteral("孔径/第三层\n偏小/0/%1/%2").arg(m_job.flowId).arg(m_user));
    const QStringList pictures{QStringLiteral("%1 a.png 截图.png %2").arg(id).arg(m_user),
                               QStringLiteral("%1 b.jpeg b.jpeg %2").arg(id).arg(m_user)};
    QCOMPARE(m_home.column(QStringLiteral("SELECT question_id || ' ' || stored_name || ' ' || "
                                          "file_name || ' ' || create_user_id FROM "
                                          "question_pictures ORDER BY id")),
             pictures);
    const QVariantMap event = m_home.lastEvent();
    QCOMPARE(event[QStringLiteral("action")].toString(), QStringLiteral("question.raise"));
    QCOMPARE(event[QStringLiteral("record_kind")].toString(), QStringLiteral("question"));
    QCOMPARE(event[QStringLiteral("record_id")].toInt(), id);
    QCOMPARE(event[QStringLiteral("record_name")].toString(), QStringLiteral("孔径"));
    QCOMPARE(event[QStringLiteral("after_value")].toString(),
             QString::fromStdString(m_job.jobName) +
                 QStringLiteral("\n第三层\n偏小\na.png\nb.jpeg"));
    QCOMPARE(m_home.events(), 1);
}

void QuestionChangesTest::theDeskListsIt()
{
    const int id = raised();
    std::vector<DataLib::Model::Odbpp_Questions> rows;
    QVERIFY(DataLib::BLL::Odbpp_QuestionsBll().select({}, {{"JobId", m_job.flowId}}, rows));
    QCOMPARE(rows.size(), std::size_t{1});
    QCOMPARE(rows.front().id, id);
    QCOMPARE(rows.front().checkFlag, 0);
}

void QuestionChangesTest::aPicturesNameIsShownAsOneLine()
{
    NewQuestion asked = question();
    asked.pictures[0].fileName = QStringLiteral("a\nb\u202Egnp.png");
    QVERIFY(QuestionChanges::raise(asked));
    QCOMPARE(one("SELECT file_name AS value FROM question_pictures WHERE stored_name = 'a.png'")
                 .toString(),
             QStringLiteral("a?b?gnp.png"));
}

void QuestionChangesTest::whatCannotBeStoredIsNotRaised_data()
{
    QTest::addColumn<NewQuestion>("asked");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QString &text,
                        const std::function<void(NewQuestion &)> &change) {
        NewQuestion asked;
        asked.title = QStringLiteral("t");
        change(asked);
        QTest::newRow(name) << asked << text;
    };
    row("no title", QStringLiteral("请填写标题"), [](auto &q) { q.title = QStringLiteral(" \t"); });
    row("a title of two lines", QStringLiteral("标题含有换行或其他控制字符"),
        [](auto &q) { q.title = QStringLiteral("a\nb"); });
    row("a title that turns the line", QStringLiteral("标题含有换行或其他控制字符"),
        [](auto &q) { q.title = QStringLiteral("a\u202Eb"); });
    row("a title too long", QStringLiteral("文本过长，最多 200 个字符"),
        [](auto &q) { q.title = QString(201, QLatin1Char('x')); });
    row("a description too long", QStringLiteral("文本过长，最多 10000 个字符"),
        [](auto &q) { q.description = QString(10001, QLatin1Char('x')); });
    row("NUL in the description", QStringLiteral("文本中含有空字符"),
        [](auto &q) { q.description = QString(QLatin1String("a\0b", 3)); });
    row("a picture that is not stored", QStringLiteral("文件库中没有该图片，未登记"), [](auto &q) {
        q.pictures = {{QStringLiteral("a.png"), {}}, {QStringLiteral("c.png"), {}}};
    });
    row("a file that is recorded already", QStringLiteral("文件库中没有该图片，未登记"),
        [](auto &q) {
            q.pictures = {{QStringLiteral("recorded.tgz"), {}}};
        });
    row("thirteen pictures", QStringLiteral("图片过多，最多 12 张"), [](auto &q) {
        q.pictures = QVector<QuestionPicture>(13, {QStringLiteral("a.png"), {}});
    });
    row("the same picture twice", QString(), [](auto &q) {
        q.pictures = QVector<QuestionPicture>(2, {QStringLiteral("a.png"), {}});
    });
    row("a flow that is gone", QStringLiteral("找不到该料号的流程"),
        [](auto &q) { q.flowId = 4711; });
}

void QuestionChangesTest::whatCannotBeStoredIsNotRaised()
{
    QFETCH(NewQuestion, asked);
    QFETCH(QString, text);
    m_home.addFile(QStringLiteral("recorded.tgz"), QStringLiteral("tgz"));
    if (asked.flowId == 0)
        asked.flowId = m_job.flowId;
    asked.userId = m_user;
    const QString before = m_home.dump();
    Tests::NoticeLog log;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("question.raise")));
    const auto id = QuestionChanges::raise(asked);
    QVERIFY(!id);
    if (!text.isEmpty())
        QCOMPARE(id.text(), text);
    QCOMPARE(m_home.dump(), before);
    QCOMPARE(m_home.events(), 0);
    QCOMPARE(log.notices.size(), 1);
}

void QuestionChangesTest::nobodyRaisesForAnother()
{
    NewQuestion asked = question();
    asked.userId = m_user + 1;
    const QString before = m_home.dump();
    QVERIFY(!QuestionChanges::raise(asked));
    QCOMPARE(m_home.dump(), before);
    QCOMPARE(m_home.refusals(), 1);
}

void QuestionChangesTest::mayRaiseTellsTheJob()
{
    const auto job = QuestionChanges::mayRaise(m_job.flowId);
    QVERIFY(job);
    QCOMPARE(job.value, QString::fromStdString(m_job.jobName));
    QCOMPARE(m_home.events(), 0);
}

void QuestionChangesTest::mayRaiseRefusesOthersJobs()
{
    m_home.signIn(m_home.addUser(QStringLiteral("li")));
    const auto job = QuestionChanges::mayRaise(m_job.flowId);
    QVERIFY(!job);
    QCOMPARE(job.text(), QStringLiteral("该料号不在您的范围内"));
    QCOMPARE(m_home.refusals(), 1);
}

void QuestionChangesTest::aPageTellsEverythingInOrder()
{
    const int id = raised();
    const int version = page(id).version;
    QVERIFY(answer(id, version, QStringLiteral("已补偿"), 1));
    QVERIFY(DataLib::BLL::Odbpp_QuestionsBll().UpdateQuestionStatus(id, 2, m_user));
    const QuestionPage now = page(id);
    QCOMPARE(now.jobName, QString::fromStdString(m_job.jobName));
    QCOMPARE(now.flowId, m_job.flowId);
    QCOMPARE(now.title, QStringLiteral("孔径"));
    QCOMPARE(now.description, QStringLiteral("第三层\n偏小"));
    QCOMPARE(now.answer, QStringLiteral("已补偿"));
    QCOMPARE(now.checkFlag, 2);
    QVERIFY(now.version > version);
    QCOMPARE(now.pictures.size(), 2);
    QCOMPARE(now.pictures.at(1).storedName, QStringLiteral("b.jpeg"));
    QStringList told;
    for (const QuestionEvent &event : now.history)
        told << QStringLiteral("%1 %2 %3 %4")
                    .arg(int(event.kind))
                    .arg(event.realName, event.text)
                    .arg(event.checkFlag);
    const QString name = now.history.first().realName;
    QVERIFY(!name.isEmpty());
    QCOMPARE(told.join(QLatin1Char('|')),
             QStringLiteral("0 %1  0|1 %1 已补偿 0|2 %1  1|2 %1  2").arg(name));
    QVERIFY(!now.history.last().time.isEmpty());
}

void QuestionChangesTest::aQuestionFromBeforeTheAudit()
{
    const QuestionPage old = page(m_home.addQuestion(m_job));
    QCOMPARE(old.version, 0);
    QCOMPARE(old.history.size(), 1);
    QCOMPARE(old.history.first().realName, QString());
    QVERIFY(!old.history.first().time.isEmpty());
    QVERIFY(answer(old.id, 0, QStringLiteral("x"), 0));
}

void QuestionChangesTest::aPageIsForWhoeverHasTheFlow()
{
    const int id = raised();
    const int li = m_home.addUser(QStringLiteral("li"));
    m_home.signIn(li);
    QVERIFY(!QuestionChanges::read(id));
    QCOMPARE(m_home.refusals(), 1);
    m_home.set(QStringLiteral("job_flows"), QStringLiteral("create_user_id"), li, m_job.flowId);
    QVERIFY(QuestionChanges::read(id));
}

void QuestionChangesTest::aQuestionThatIsGone()
{
    for (const bool reads : {true, false}) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no such question")));
        const QString text =
            reads ? QuestionChanges::read(99).text() : answer(99, 0, QStringLiteral("x"), 0).text;
        QCOMPARE(text, QStringLiteral("该问题已不存在"));
    }
    QCOMPARE(m_home.events(), 0);
}

void QuestionChangesTest::answerAndStateAreOneStep()
{
    const int id = raised();
    const int events = m_home.events();
    QVERIFY(answer(id, page(id).version, QStringLiteral("已补偿"), 3));
    QCOMPARE(
        one("SELECT answer || '/' || check_flag || '/' || update_user_id AS value FROM questions")
            .toString(),
        QStringLiteral("已补偿/3/%1").arg(m_user));
    QVERIFY(!one("SELECT update_time AS value FROM questions").toString().isEmpty());
    const QStringList told{QStringLiteral("question.answer >已补偿 孔径"),
                           QStringLiteral("question.UpdateQuestionStatus 0>3 孔径")};
    QCOMPARE(m_home.column(QStringLiteral(
                 "SELECT action || ' ' || before_value || '>' || after_value || ' ' || record_name "
                 "FROM events WHERE id > (SELECT MIN(id) FROM events) ORDER BY id")),
             told);
    QCOMPARE(m_home.events(), events + 2);
}

void QuestionChangesTest::anAnswerAloneKeepsTheState()
{
    const int id = raised();
    QVERIFY(answer(id, page(id).version, QStringLiteral("one"), 0));
    QVERIFY(answer(id, page(id).version, QStringLiteral("two"), 0));
    QCOMPARE(page(id).checkFlag, 0);
    QCOMPARE(page(id).history.size(), 3);
    QCOMPARE(page(id).history.at(1).text, QStringLiteral("one"));
    QCOMPARE(page(id).answer, QStringLiteral("two"));
}

void QuestionChangesTest::aStateAloneKeepsTheAnswer()
{
    const int id = raised();
    QVERIFY(answer(id, page(id).version, QStringLiteral("one"), 0));
    QVERIFY(answer(id, page(id).version, QStringLiteral(" \n"), 1));
    QCOMPARE(page(id).checkFlag, 1);
    QCOMPARE(page(id).answer, QStringLiteral("one"));
    QCOMPARE(page(id).history.size(), 3);
}

void QuestionChangesTest::anAnswerThatCannotBeStored_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("flag");
    QTest::addColumn<QString>("why");
    QTest::newRow("nothing at all") << " " << 0 << "请填写回复或更改状态";
    QTest::newRow("too long") << QString(10001, QLatin1Char('x')) << 1
                              << "文本过长，最多 10000 个字符";
    QTest::newRow("no such state") << "x" << 4 << "问题状态无效";
    QTest::newRow("a state below all") << "x" << -1 << "问题状态无效";
}

void QuestionChangesTest::anAnswerThatCannotBeStored()
{
    QFETCH(QString, text);
    QFETCH(int, flag);
    QFETCH(QString, why);
    const int id = raised();
    const int version = page(id).version;
    const QString before = m_home.dump();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("question.answer")));
    const Outcome outcome = answer(id, version, text, flag);
    QCOMPARE(outcome.text, why);
    QVERIFY(!m_isOvertaken);
    QCOMPARE(m_home.dump(), before);
    QCOMPARE(page(id).version, version);
}

void QuestionChangesTest::whoeverWasOvertakenIsTold()
{
    const int id = raised();
    const int shown = page(id).version;
    const int li = m_home.addUser(QStringLiteral("li"), {Role::Admin});
    m_home.signIn(li);
    QVERIFY(DataLib::BLL::Odbpp_QuestionsBll().UpdateQuestionStatus(id, 1, li));
    m_home.signIn(m_user);
    const QString before = m_home.dump();
    const Outcome outcome = answer(id, shown, QStringLiteral("x"), 2);
    QVERIFY(!outcome.ok);
    QVERIFY(m_isOvertaken);
    const QuestionEvent last = page(id).history.last();
    QVERIFY(!last.realName.isEmpty());
    QVERIFY2(outcome.text.startsWith(last.realName + QStringLiteral(" 于 ")),
             qPrintable(outcome.text));
    QCOMPARE(m_home.dump(), before);
    QCOMPARE(m_home.refusals(), 1);
    QVERIFY(answer(id, page(id).version, QStringLiteral("x"), 2));
    QVERIFY(!m_isOvertaken);
}

/// Deleting the original file would take the picture from the question.
void QuestionChangesTest::aPictureIsNoOriginalFile()
{
    raised();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("recorded already")));
    QVERIFY(!DataLib::BLL::Odbpp_OrigFilesBll().inputOrigFile(newGuid().toStdString(), "a", "a.png",
                                                              "png", "A1B", 0, m_user));
}

KODMS_TEST_MAIN(QuestionChangesTest, QCoreApplication)
#include "QuestionChangesTest.moc"
