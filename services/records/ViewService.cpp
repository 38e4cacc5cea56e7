// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/ViewService.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/Dialect.h"
#include "services/records/RecordContext.h"
#include "services/records/SearchListener.h"
#include "services/records/Transaction.h"
#include "services/records/ViewIndex.h"
#include "services/records/conditions/ViewSearch.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("ViewService", text);
}

} // namespace

bool ViewService::fail(const QString &cause, const QString &userText) const
{
    reportFailure(lcRecords(), m_operation, QLatin1String(m_view.name), cause, userText);
    return false;
}

bool ViewService::search(const List &conditions, const List &countConditions,
                         const ReadRows &readRows, int *totalCount)
{
    *totalCount = 0;
    RecordContext *context = RecordContext::current();
    if (context == nullptr)
        return fail(QStringLiteral("no database is open"), tr("数据库未打开，无法查询"));
    if (context->searchListener() != nullptr)
        context->searchListener()->searching(m_view, conditions);
    try {
        return searchByIndex(*context, conditions, countConditions, readRows, totalCount) ||
               searchIn(*context, conditions, countConditions, readRows, totalCount);
    } catch (const SqlError &error) {
        *totalCount = 0;
        return fail(error.logText(), tr("查询失败：%1").arg(error.userText()));
    } catch (const std::exception &error) {
        *totalCount = 0;
        return fail(QString::fromUtf8(error.what()), tr("查询失败：%1").arg(tr("内部错误")));
    }
}

/// A server is asked twice: what has changed, and for the rows of the page. It is one state that
/// both have seen when both are of one moment and over one connection; else a transaction sees
/// to that.
bool ViewService::searchByIndex(RecordContext &context, const List &conditions,
                                const List &countConditions, const ReadRows &readRows,
                                int *totalCount) const
{
    Database &database = context.database();
    if (!database.dialect().tellsMoments() || !database.isOutsideTransactions() ||
        context.viewIndex() == nullptr || !context.viewIndex()->isReady())
        return false;
    const int generation = database.generation();
    ViewSearch search(context, m_view);
    if (!search.runByIndex(conditions, countConditions) || search.moment().isEmpty() ||
        !readRows(context, search) || database.generation() != generation)
        return false;
    *totalCount = search.totalCount();
    return true;
}

bool ViewService::searchIn(RecordContext &context, const List &conditions,
                           const List &countConditions, const ReadRows &readRows, int *totalCount)
{
    Transaction oneState(context.database(), Transaction::Purpose::Read);
    ViewSearch search(context, m_view);
    if (!search.run(conditions, countConditions))
        return fail(search.problem(), tr("查询条件有误，未执行查询"));
    readRows(context, search);
    *totalCount = search.totalCount();
    oneState.commit();
    return true;
}

} // namespace KODMS::Services
