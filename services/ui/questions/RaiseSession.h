// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/ui/questions/QuestionSession.h"
#include "services/ui/questions/RaiseForm.h"

namespace KODMS::Services {

class QuestionFiling;

/// Writing a question on a flow.
class RaiseSession final : public QuestionSession {
    Q_OBJECT

public:
    RaiseSession(RaiseForm &form, QWidget &window);

    void retarget(int flowId) override;

private:
    void setWorking(bool isWorking) override { m_form.setWorking(isWorking); }

    void say(const QString &text, bool isError) override { m_form.say(text, isError); }

    bool hasDraft() const;
    void point(int flowId, const QString &jobName);
    void takePictures(const BroughtPictures &brought);
    Result<QVector<PictureFile>> readPictures(const BroughtPictures &brought, int room,
                                              QStringList &refused);
    void removePicture(int index);
    void openPicture(int index);
    void submit();
    Result<int> file();
    Outcome storePictures(QuestionFiling &filing);

    RaiseForm &m_form;
    QString m_jobName;
    QVector<PictureFile> m_pictures;
};

} // namespace KODMS::Services
