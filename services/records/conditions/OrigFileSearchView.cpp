// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/SearchView.h"

namespace KODMS::Services {

namespace {

enum Table : unsigned { Flow = 1, Customer = 2, Stored = 4, Executor = 8, ExecutorUser = 16 };

constexpr auto text = ViewField::Kind::Text;
constexpr auto number = ViewField::Kind::Number;

constexpr const char *byCustomer = "SELECT id FROM job_compress WHERE customer_id";

constexpr const char *byExecutor =
    "SELECT c2.id FROM orig_file_assign a2 JOIN job_compress c2 ON c2.flow_id = a2.flow_id "
    "WHERE a2.executor_id";

ViewField customerField(const char *name, const char *column, const char *plainColumn)
{
    return {name,       text,        column,      Customer,        -1,
            byCustomer, "customers", plainColumn, "c.customer_id", 0};
}

ViewField neverNull(ViewField field)
{
    field.isNeverNull = true;
    return field;
}

SearchView makeView()
{
    SearchView view;
    view.name = "original-file view";
    view.table = "job_compress c";
    view.id = "c.id";
    view.joins = {
        {Flow, 0, "JOIN job_flows f ON f.id = c.flow_id"},
        {Customer, 0, "JOIN customers k ON k.id = c.customer_id"},
        {Stored, 0, "LEFT JOIN orig_files o ON o.id = c.orig_file_id"},
        {Executor, 0, "LEFT JOIN orig_file_assign oa ON oa.flow_id = c.flow_id"},
        {ExecutorUser, Executor, "LEFT JOIN users ou ON ou.id = oa.executor_id"},
    };
    view.fields = {
        {"OrigFile_Id", number, "c.id", 0, -1, "SELECT id FROM job_compress WHERE id"},
        {"OrigName", text, "c.orig_name", 0},
        customerField("KoName", "k.short_name", "short_name"),
        customerField("KoCode", "k.code", "code"),
        customerField("SuperiorCo1", "k.superior_1", "superior_1"),
        customerField("SuperiorCo2", "k.superior_2", "superior_2"),
        {"FileType", text, "o.file_type", Stored},
        {"JobSerialNumber", number, "c.serial_number", 0, -1,
         "SELECT id FROM job_compress WHERE serial_number"},
        {"FileUuid", text, "o.stored_name", Stored},
        {"FileDescription", text, "c.description", 0},
        {"FileTips", text, "c.tips", 0},
        {"Flow_FlowGUID", text, "f.guid", Flow},
        {"UpdateTime", text, "c.update_time", 0},
        {"CreateTime", text, "c.create_time", 0},
        {"PreUser_RealName", text, "ou.real_name", ExecutorUser, -1, byExecutor, "users",
         "real_name", "oa.executor_id", Executor},
        {"PreUser_id", number, "oa.executor_id", Executor, -1, byExecutor},
        neverNull({"FlowTable_CreateTime", text, "c.flow_create_time", 0}),
    };
    return view;
}

} // namespace

const SearchView &SearchView::origFiles()
{
    static const SearchView view = makeView();
    return view;
}

} // namespace KODMS::Services
