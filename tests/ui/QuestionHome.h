// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/Intake.h"
#include "tests/common/support/TestInstallation.h"

#include <QImage>

namespace KODMS::Tests {

/// An installation with two jobs, both of the signed-in executor, and pictures on the disk
/// beside it.
class QuestionHome {
public:
    QuestionHome();

    TestInstallation house;
    Services::IntakeReceipt job;
    Services::IntakeReceipt other;
    int user = 0;

    /// Both jobs are in this user's scope from now on.
    void assignTo(int userId);

    static QImage picture(int width = 40, int height = 30);
    /// Writes a picture, or other bytes, under this name; returns the path.
    QString file(const QString &name) const;
    QString file(const QString &name, const QByteArray &bytes) const;

    /// A question with as many pictures, past the window; its id.
    int raise(const QString &title, int pictures = 0, const QString &description = {});

    /// How many questions, pictures, stored files and files in staging there are.
    QString stock();
};

} // namespace KODMS::Tests
