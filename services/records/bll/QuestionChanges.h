// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/records/bll/QuestionRecords.h"

namespace KODMS::Services {

/// A question before it is recorded.
struct NewQuestion {
    int flowId = 0;
    int userId = 0; ///< who wrote it
    QString title;
    QString description;
    QVector<QuestionPicture> pictures; ///< stored already
};

struct QuestionAnswer {
    int questionId = 0;
    int userId = 0;  ///< who wrote it
    int version = 0; ///< of the question as it was shown
    QString text;    ///< empty: only the state
    int checkFlag = 0;
};

/// Raising, reading and answering questions: for whoever has the flow in scope. Each
/// failure is said in the log and as a notice too.
class QuestionChanges {
public:
    static constexpr const char *AnswerAction = "question.answer";
    static constexpr const char *StateAction = "question.UpdateQuestionStatus";

    static constexpr int LongestTitle = 200;
    static constexpr int LongestText = 10000;
    static constexpr int MostPictures = 12;

    /// The name of the flow's job, when a question may be raised on it.
    static Result<QString> mayRaise(int flowId);

    /// The new question's id. Refuses pictures that are not in the store.
    static Result<int> raise(const NewQuestion &question);

    static Result<QuestionPage> read(int questionId);

    /// Answer and state in one step. Refused, as overtaken, when somebody changed the
    /// question since it was shown.
    static Outcome answer(const QuestionAnswer &answer, bool &isOvertaken);
};

} // namespace KODMS::Services
