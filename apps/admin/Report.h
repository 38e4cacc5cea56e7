// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/ExitCode.h"
#include "services/notices/Outcome.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace KODMS::Admin {

/// How a command ended: for people (`lines` or `error`) and for programs (`data`).
struct Report {
    ExitCode code = ExitCode::Success;
    QString error;
    QStringList lines;
    QJsonObject data;

    static Report success(const QStringList &lines, const QJsonObject &data = {});
    static Report failure(const QString &error);
    static Report usage(const QString &error);
    /// `state`: what stands now.
    static Report cancelled(const QString &state = QStringLiteral("nothing was left half done"));
    /// A question that got no answer: Ctrl-C at the prompt, or a failure.
    static Report unanswered(const QString &error);
    /// Success with this line and data, or the outcome's failure.
    static Report of(const Services::Outcome &outcome, const QString &line,
                     const QJsonObject &data = {});

    /// One object: command, ok, exitCode, error when there is one, and the data.
    QByteArray toJson(const QString &command) const;
};

} // namespace KODMS::Admin
