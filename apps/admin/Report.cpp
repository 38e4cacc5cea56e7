// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/Report.h"

#include "apps/console/Interrupt.h"

#include <QJsonDocument>

namespace KODMS::Admin {

using Console::Interrupt;

Report Report::success(const QStringList &lines, const QJsonObject &data)
{
    return {ExitCode::Success, QString(), lines, data};
}

Report Report::failure(const QString &error)
{
    return {ExitCode::Failed, error, {}, {}};
}

Report Report::usage(const QString &error)
{
    return {ExitCode::Usage, error, {}, {}};
}

Report Report::cancelled(const QString &state)
{
    return {ExitCode::Cancelled, QStringLiteral("cancelled; ") + state, {}, {}};
}

Report Report::unanswered(const QString &error)
{
    return Interrupt::wasAskedFor() ? cancelled() : failure(error);
}

Report Report::of(const Services::Outcome &outcome, const QString &line, const QJsonObject &data)
{
    return outcome ? success({line}, data) : failure(outcome.text);
}

QByteArray Report::toJson(const QString &command) const
{
    QJsonObject object = data;
    object.insert(QStringLiteral("command"), command);
    object.insert(QStringLiteral("ok"), code == ExitCode::Success);
    object.insert(QStringLiteral("exitCode"), static_cast<int>(code));
    if (!error.isEmpty())
        object.insert(QStringLiteral("error"), error);
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace KODMS::Admin
