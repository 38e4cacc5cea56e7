// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/StoreCheck.h"

#include "services/api/internal/StoreCheckRun.h"
#include "services/notices/NoticeHub.h"
#include "services/session/Runtime.h"
#include "services/tasks/TaskRunner.h"

#include <QCoreApplication>

#include <algorithm>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("StoreCheck", text);
}

} // namespace

bool CheckReport::isClean() const
{
    return std::none_of(findings.cbegin(), findings.cend(), [](const CheckFinding &finding) {
        return finding.isProblem && !finding.isRepaired;
    });
}

Result<CheckReport> StoreCheck::check(const CheckOptions &options, Progress *progress)
{
    Runtime *runtime = Runtime::current();
    if (!runtime)
        return Outcome::failure(tr("服务尚未启动"));
    const Actor &actor = runtime->records().actor();
    if (!actor.roles.has(Role::Admin)) {
        reportRefusal("check", QString(), QStringLiteral("user %1").arg(actor.userId),
                      tr("只有管理员可以检查文件库"));
        return Outcome::failure(tr("只有管理员可以检查文件库"));
    }
    CheckReport report;
    const auto work = [&](Progress &shown) {
        try {
            auto made =
                StoreCheckRun(runtime->configuration(), runtime->fileStore(), options, actor.userId)
                    .run(shown);
            report = std::move(made.value);
            return made.outcome;
        } catch (const SqlError &error) {
            qCWarning(lcRecords).noquote() << "check" << error.logText();
            return Outcome::failure(error.userText(), error.logText());
        }
    };
    const Outcome checked =
        progress ? work(*progress) : TaskRunner::instance().run(tr("检查文件库"), work);
    if (!checked)
        return checked;
    return report;
}

} // namespace KODMS::Services
