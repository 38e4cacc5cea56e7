// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVector>

#include <optional>

namespace KODMS::Services {

class Database;

struct QuestionPicture {
    QString storedName;
    QString fileName; ///< what it was called where it came from; only for people
};

/// One thing that somebody did to a question.
struct QuestionEvent {
    enum class Kind { Raised, Answered, StateSet };

    Kind kind = Kind::Raised;
    QString realName;  ///< empty: not known
    QString time;      ///< as stored
    QString text;      ///< what was answered
    int checkFlag = 0; ///< the state that was set
};

/// A question with all that its window shows.
struct QuestionPage {
    int id = 0;
    int flowId = 0;
    QString jobName;
    QString title;
    QString description;
    QString answer; ///< the latest
    int checkFlag = 0;
    QVector<QuestionPicture> pictures;
    QVector<QuestionEvent> history; ///< oldest first, beginning with its raising
    int version = 0;                ///< moves with every change
};

/// Reads single questions. Throws SqlError.
class QuestionRecords {
public:
    explicit QuestionRecords(Database &database) : m_database(database) {}

    /// All but the job's name.
    std::optional<QuestionPage> byId(int id);

private:
    void readPictures(QuestionPage &page);
    void readHistory(QuestionPage &page);

    Database &m_database;
};

} // namespace KODMS::Services
