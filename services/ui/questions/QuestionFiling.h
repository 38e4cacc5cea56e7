// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Progress.h"
#include "services/records/bll/QuestionChanges.h"
#include "services/ui/questions/PictureFile.h"

#include <QVector>

namespace KODMS::Services {

class Runtime;

/// Raises one question: first its pictures into the store, then all records in one
/// transaction. What was stored and not recorded is taken back when the object goes.
/// Belongs to the user who was signed in when it was made.
class QuestionFiling {
public:
    QuestionFiling(Runtime &runtime, int flowId, const QString &title, const QString &description);
    ~QuestionFiling();
    QuestionFiling(const QuestionFiling &) = delete;
    QuestionFiling &operator=(const QuestionFiling &) = delete;

    /// All pictures, or a failure. Any thread.
    Outcome store(const QVector<PictureFile> &pictures, Progress &progress);

    /// GUI thread. Nothing is recorded when somebody else acts by now.
    Result<int> record();

private:
    Outcome storeOne(const PictureFile &picture, Progress &progress);
    void takeBack();

    Runtime *m_runtime;
    NewQuestion m_question; ///< with the pictures that are stored so far
    bool m_isRecorded = false;
};

} // namespace KODMS::Services
