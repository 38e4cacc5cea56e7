// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/User_ViewBll.h"

#include "services/records/Database.h"
#include "services/records/bll/KeyConditions.h"
#include "services/records/bll/RecordRead.h"

#include <QCoreApplication>

namespace KODMS::DataLib::BLL {

using namespace Services;

namespace {

constexpr Operation selectUsers{"user.select", QT_TRANSLATE_NOOP("Change", "查询用户")};

const std::vector<KeyConditions::Key> keys{{"RealName", "real_name", false},
                                           {"LoginName", "login_name", false},
                                           {"Id", "id", true},
                                           {"Department", "department", true},
                                           {"Post", "post", true}};

} // namespace

bool User_ViewBll::select(const std::map<std::string, std::string> &textConditions,
                          const std::map<std::string, int> &numberConditions,
                          std::vector<Model::User_View> &rows)
{
    rows.clear();
    return readRecords(selectUsers, {}, [&](Database &database) {
        const KeyConditions conditions(keys, textConditions, numberConditions);
        SqlQuery query =
            database.prepare(QStringLiteral("SELECT id, real_name, department, post FROM users "
                                            "WHERE disabled = 0") +
                             conditions.andSql() + QStringLiteral(" ORDER BY real_name, id"));
        conditions.bindTo(query);
        query.exec();
        while (query.next())
            rows.push_back({query.number("id"), query.text("real_name").toStdString(),
                            query.number("department"), query.number("post")});
    });
}

} // namespace KODMS::DataLib::BLL
