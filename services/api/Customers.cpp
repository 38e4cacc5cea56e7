// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Customers.h"

#include "services/notices/NoticeHub.h"
#include "services/records/RecordContext.h"
#include "services/records/bll/Right.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("Customers", source);
}

} // namespace

Result<QVector<CustomerName>> Customers::known()
{
    RecordContext *context = RecordContext::current();
    if (!context || !carriesRight(context->actor().roles, Right::ChangeFiles))
        return Outcome::failure(text(QT_TRANSLATE_NOOP("Customers", "没有权限查看客户")));
    QVector<CustomerName> customers;
    try {
        SqlQuery query = context->database().query("select_all_customers");
        query.exec();
        while (query.next())
            customers.append({query.text("code"), query.text("short_name")});
    } catch (const SqlError &error) {
        reportFailure(lcRecords(), "Customers::known", QString(), error.logText(),
                      error.userText());
        return Outcome::failure(error.userText());
    }
    return customers;
}

} // namespace KODMS::Services
