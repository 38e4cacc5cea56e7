// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/RecordRead.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/RecordContext.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

void report(const Operation &operation, const std::string &record, const QString &cause,
            const QString &userText)
{
    reportFailure(lcRecords(), operation.action, shortText(record), cause,
                  tr("%1：%2").arg(tr(operation.title), userText));
}

} // namespace

bool readRecords(const Operation &operation, const std::string &record,
                 const std::function<void(Database &)> &body)
{
    RecordContext *context = RecordContext::current();
    if (!context) {
        report(operation, record, QStringLiteral("no database is open"), tr("没有打开的数据库"));
        return false;
    }
    if (context->actor().userId == 0) {
        reportRefusal(operation.action, shortText(record), QStringLiteral("nobody is signed in"),
                      tr("请先登录"));
        return false;
    }
    try {
        body(context->database());
        return true;
    } catch (const ChangeStopped &why) {
        report(operation, record, why.cause(), why.userText());
    } catch (const SqlError &error) {
        report(operation, record, error.logText(), error.userText());
    } catch (const std::exception &error) {
        report(operation, record, QString::fromUtf8(error.what()), tr("内部错误"));
    }
    return false;
}

} // namespace KODMS::Services
