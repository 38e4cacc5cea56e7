// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/QuestionRecords.h"

#include "services/records/Database.h"
#include "services/records/bll/QuestionChanges.h"

namespace KODMS::Services {

std::optional<QuestionPage> QuestionRecords::byId(int id)
{
    QuestionPage page;
    QuestionEvent raised;
    {
        SqlQuery query = m_database.query("select_question_by_id");
        if (!query.bind(":id", id).exec().next())
            return std::nullopt;
        page.id = query.number("id");
        page.flowId = query.number("flow_id");
        page.title = query.text("title");
        page.description = query.text("description");
        page.answer = query.text("answer");
        page.checkFlag = query.number("check_flag");
        raised.realName = query.text("raiser_name");
        raised.time = query.text("create_time");
    }
    page.history << raised;
    readPictures(page);
    readHistory(page);
    return page;
}

void QuestionRecords::readPictures(QuestionPage &page)
{
    SqlQuery query = m_database.query("select_question_pictures");
    query.bind(":question", page.id).exec();
    while (query.next())
        page.pictures.append({query.text("stored_name"), query.text("file_name")});
}

/// The audit is the history: nothing is ever taken out of it. What raised the question
/// stands in the question itself, which also tells it of those that have no audit.
void QuestionRecords::readHistory(QuestionPage &page)
{
    SqlQuery query = m_database.query("select_question_history");
    query.bind(":question", page.id).exec();
    while (query.next()) {
        page.version = query.number("id");
        const QString action = query.text("action");
        QuestionEvent event;
        event.realName = query.text("real_name");
        event.time = query.text("create_time");
        if (action == QLatin1String(QuestionChanges::AnswerAction)) {
            event.kind = QuestionEvent::Kind::Answered;
            event.text = query.text("after_value");
        } else if (action == QLatin1String(QuestionChanges::StateAction)) {
            event.kind = QuestionEvent::Kind::StateSet;
            event.checkFlag = query.text("after_value").toInt();
        } else {
            continue;
        }
        page.history << event;
    }
}

} // namespace KODMS::Services
