// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_QuestionsBll.h"

#include "services/records/Database.h"
#include "services/records/TimeText.h"
#include "services/records/bll/KeyConditions.h"
#include "services/records/bll/RecordRead.h"

#include <QCoreApplication>

namespace KODMS::DataLib::BLL {

using namespace Services;

namespace {

constexpr Operation selectQuestions{"question.select", QT_TRANSLATE_NOOP("Change", "查询问题")};
constexpr Operation updateStatus{"question.UpdateQuestionStatus",
                                 QT_TRANSLATE_NOOP("Change", "更改问题状态")};

constexpr int LargestFlag = 3;

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

const std::vector<KeyConditions::Key> keys{{"Title", "title", false},
                                           {"Id", "id", true},
                                           {"JobId", "flow_id", true},
                                           {"CheckFlag", "check_flag", true}};

Model::Odbpp_Questions recordOf(const SqlQuery &query)
{
    Model::Odbpp_Questions question;
    question.id = query.number("id");
    question.jobId = query.number("flow_id");
    question.title = query.text("title").toStdString();
    question.description = query.text("description").toStdString();
    question.checkFlag = query.number("check_flag");
    return question;
}

void writeFlag(Change &change, int questionId, int checkFlag)
{
    change.database()
        .query("update_question_flag")
        .bind(":flag", checkFlag)
        .bind(":user", change.actor().userId)
        .bind(":time", storedNow())
        .bind(":id", questionId)
        .exec();
}

} // namespace

bool Odbpp_QuestionsBll::select(const std::map<std::string, std::string> &textConditions,
                                const std::map<std::string, int> &numberConditions,
                                std::vector<Model::Odbpp_Questions> &rows)
{
    rows.clear();
    return readRecords(selectQuestions, {}, [&](Database &database) {
        const KeyConditions conditions(keys, textConditions, numberConditions);
        SqlQuery query =
            database.prepare(QStringLiteral("SELECT id, flow_id, title, description, check_flag "
                                            "FROM questions WHERE 1 = 1") +
                             conditions.andSql() + QStringLiteral(" ORDER BY create_time, id"));
        conditions.bindTo(query);
        query.exec();
        while (query.next())
            rows.push_back(recordOf(query));
    });
}

bool Odbpp_QuestionsBll::UpdateQuestionStatus(int questionId, int checkFlag, int userId)
{
    return Change::run(updateStatus, std::to_string(questionId), [&](Change &change) {
        change.actsAs(userId);
        if (checkFlag < 0 || checkFlag > LargestFlag)
            Change::fail(QStringLiteral("no question has state %1").arg(checkFlag),
                         tr("问题状态无效"));
        SqlQuery query = change.database().query("select_question_by_id");
        query.bind(":id", questionId).exec();
        if (!query.next())
            Change::fail(QStringLiteral("there is no such question"), tr("该问题已不存在"));
        change.needs(Right::Question, change.flowById(query.number("flow_id")));
        change.isAbout(QStringLiteral("question"), questionId, query.text("title"));
        change.audit(QString::number(query.number("check_flag")), QString::number(checkFlag));
        writeFlag(change, questionId, checkFlag);
    });
}

} // namespace KODMS::DataLib::BLL
