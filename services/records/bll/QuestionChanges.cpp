// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/QuestionChanges.h"

#include "services/notices/OneLine.h"
#include "services/records/Database.h"
#include "services/records/StoredFiles.h"
#include "services/records/TimeText.h"
#include "services/records/bll/Audit.h"
#include "services/records/bll/Change.h"
#include "services/records/bll/StoredFileRecords.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

constexpr Operation raiseQuestion{"question.raise", QT_TRANSLATE_NOOP("Change", "创建问题")};
constexpr Operation readQuestion{"question.read", QT_TRANSLATE_NOOP("Change", "查看问题")};
constexpr Operation answerQuestion{QuestionChanges::AnswerAction,
                                   QT_TRANSLATE_NOOP("Change", "回复问题")};

const QString questionKind = QStringLiteral("question");
constexpr int LargestFlag = 3;

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

QString goodTitle(const QString &given)
{
    const QString title =
        Change::text(given.trimmed().toStdString(), QuestionChanges::LongestTitle);
    if (title.isEmpty())
        Change::fail(QStringLiteral("a question without a title"), tr("请填写标题"));
    if (!isOneLine(title))
        Change::fail(QStringLiteral("a title with control characters"),
                     tr("标题含有换行或其他控制字符"));
    return title;
}

QString goodText(const QString &given)
{
    return Change::text(given.toStdString(), QuestionChanges::LongestText);
}

void requireStored(Change &change, const QVector<QuestionPicture> &pictures)
{
    if (pictures.size() > QuestionChanges::MostPictures)
        Change::fail(QStringLiteral("%1 pictures").arg(pictures.size()),
                     tr("图片过多，最多 %1 张").arg(QuestionChanges::MostPictures));
    StoredFileRecords records(change.database());
    for (const QuestionPicture &picture : pictures)
        if (!change.isStored(picture.storedName) || records.isRecorded(picture.storedName))
            Change::fail(QStringLiteral("no new file is stored as ") + picture.storedName,
                         tr("文件库中没有该图片，未登记"));
}

void insertPictures(Change &change, int questionId, const QVector<QuestionPicture> &pictures)
{
    SqlQuery insert = change.database().query("insert_question_picture");
    for (const QuestionPicture &picture : pictures)
        insert.bind(":question", questionId)
            .bind(":name", picture.storedName)
            .bind(":file", Change::text(oneLine(picture.fileName).toStdString(), LongestName))
            .bind(":user", change.actor().userId)
            .bind(":time", storedNow())
            .exec();
}

int insertQuestion(Change &change, const FlowRow &flow, const NewQuestion &question)
{
    SqlQuery insert = change.database().query("insert_question");
    insert.bind(":flow", flow.id)
        .bind(":title", goodTitle(question.title))
        .bind(":description", goodText(question.description))
        .bind(":user", change.actor().userId)
        .bind(":time", storedNow())
        .exec();
    insert.next();
    return insert.number("id");
}

/// For the audit: everything that the question began with.
QString wholeText(const FlowRow &flow, const NewQuestion &question)
{
    QStringList lines{flow.jobName, question.description};
    for (const QuestionPicture &picture : question.pictures)
        lines << picture.storedName;
    return lines.join(QLatin1Char('\n'));
}

/// The question, when this user may have it.
QuestionPage allowedQuestion(Change &change, int questionId)
{
    auto page = QuestionRecords(change.database()).byId(questionId);
    if (!page)
        Change::fail(QStringLiteral("there is no such question"), tr("该问题已不存在"));
    const FlowRow flow = change.flowById(page->flowId);
    change.needs(Right::Question, flow);
    change.isAbout(questionKind, questionId, page->title);
    page->jobName = flow.jobName;
    return *page;
}

[[noreturn]] void refuseOvertaken(const QuestionPage &page, const QuestionAnswer &answer)
{
    const QuestionEvent &last = page.history.last();
    Change::refuse(
        QStringLiteral("version %1 was shown, it is %2 now").arg(answer.version).arg(page.version),
        tr("%1 于 %2 更改了此问题，请核对后再提交").arg(last.realName, shownTime(last.time)));
}

void writeAnswer(Change &change, const QuestionPage &page, const QString &text)
{
    change.database()
        .query("update_question_answer")
        .bind(":answer", text)
        .bind(":user", change.actor().userId)
        .bind(":time", storedNow())
        .bind(":id", page.id)
        .exec();
    change.audit(page.answer, text);
}

/// Told under its own name, as when it is set without an answer.
void writeState(Change &change, const QuestionPage &page, int checkFlag)
{
    change.database()
        .query("update_question_flag")
        .bind(":flag", checkFlag)
        .bind(":user", change.actor().userId)
        .bind(":time", storedNow())
        .bind(":id", page.id)
        .exec();
    writeAudit(change.database(),
               {change.actor().userId, QString::fromLatin1(QuestionChanges::StateAction),
                questionKind, page.id, page.title, QString::number(page.checkFlag),
                QString::number(checkFlag), false});
}

} // namespace

Result<QString> QuestionChanges::mayRaise(int flowId)
{
    QString jobName;
    const Outcome allowed =
        Change::outcomeOfLook(raiseQuestion, std::to_string(flowId), [&](Change &change) {
            const FlowRow flow = change.flowById(flowId);
            change.needs(Right::Question, flow);
            jobName = flow.jobName;
        });
    if (!allowed)
        return allowed;
    return jobName;
}

Result<int> QuestionChanges::raise(const NewQuestion &question)
{
    int id = 0;
    const Outcome raised =
        Change::outcomeOf(raiseQuestion, std::to_string(question.flowId), [&](Change &change) {
            change.actsAs(question.userId);
            const FlowRow flow = change.flowById(question.flowId);
            change.needs(Right::Question, flow);
            requireStored(change, question.pictures);
            id = insertQuestion(change, flow, question);
            insertPictures(change, id, question.pictures);
            change.isAbout(questionKind, id, question.title.trimmed());
            change.audit(QString(), wholeText(flow, question));
        });
    if (!raised)
        return raised;
    return id;
}

Result<QuestionPage> QuestionChanges::read(int questionId)
{
    QuestionPage page;
    const Outcome found =
        Change::outcomeOfLook(readQuestion, std::to_string(questionId),
                              [&](Change &change) { page = allowedQuestion(change, questionId); });
    if (!found)
        return found;
    return page;
}

Outcome QuestionChanges::answer(const QuestionAnswer &answer, bool &isOvertaken)
{
    return Change::outcomeOf(
        answerQuestion, std::to_string(answer.questionId), [&](Change &change) {
            change.actsAs(answer.userId);
            if (answer.checkFlag < 0 || answer.checkFlag > LargestFlag)
                Change::fail(QStringLiteral("no question has state %1").arg(answer.checkFlag),
                             tr("问题状态无效"));
            const QuestionPage page = allowedQuestion(change, answer.questionId);
            isOvertaken = page.version != answer.version;
            if (isOvertaken)
                refuseOvertaken(page, answer);
            const QString text = goodText(answer.text);
            if (text.trimmed().isEmpty() && answer.checkFlag == page.checkFlag)
                Change::fail(QStringLiteral("neither an answer nor another state"),
                             tr("请填写回复或更改状态"));
            if (!text.trimmed().isEmpty())
                writeAnswer(change, page, text);
            if (answer.checkFlag != page.checkFlag)
                writeState(change, page, answer.checkFlag);
        });
}

} // namespace KODMS::Services
