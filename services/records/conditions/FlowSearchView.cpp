// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/SearchView.h"

namespace KODMS::Services {

namespace {

enum Table : unsigned {
    Jobs = 1,
    Executor = 2,
    ExecutorUser = 4,
    Checker = 8,
    CheckerUser = 16,
    Original = 32,
    Imported = 64,
    Order = 128
};

constexpr auto text = ViewField::Kind::Text;
constexpr auto number = ViewField::Kind::Number;

constexpr const char *byExecutor = "SELECT flow_id FROM orig_file_assign WHERE executor_id";
constexpr const char *byChecker = "SELECT flow_id FROM pre_check_assign WHERE executor_id";

constexpr const char *byLayers =
    "SELECT f2.id FROM jobs j2 JOIN job_flows f2 ON f2.job_name = j2.name WHERE j2.layer_count";
constexpr const char *byFeatures =
    "SELECT f2.id FROM jobs j2 JOIN job_flows f2 ON f2.job_name = j2.name WHERE j2.feature_count";
constexpr const char *byJobCreator =
    "SELECT f2.id FROM jobs j2 JOIN job_flows f2 ON f2.job_name = j2.name WHERE j2.create_user_id";
constexpr const char *byCreator = "SELECT id FROM job_flows WHERE create_user_id";
constexpr const char *byImporter = "SELECT id FROM job_flows WHERE last_import_user_id";
// Written so that no engine takes the set for a way to the rows.
constexpr const char *plainId = "f.id + 0";
constexpr const char *isImported = "CASE WHEN f.last_import_time IS NULL THEN 0 ELSE 1 END";
constexpr const char *isWeb = "CASE WHEN lower(f.job_name) LIKE 'web%' THEN 1 ELSE 0 END";

ViewField withSet(ViewField field, const char *set, const char *column)
{
    field.set = set;
    field.setColumn = column;
    return field;
}

ViewField neverNull(ViewField field)
{
    field.isNeverNull = true;
    return field;
}

SearchView makeView()
{
    SearchView view;
    view.name = "flow view";
    view.table = "job_flows f";
    view.id = "f.id";
    view.status = "Flow_FlowStatus";
    view.flag = "Flow_CheckFlag";
    view.state = "f.check_flag + f.flow_status * 4";
    view.stateWalk = "SELECT id FROM job_flows WHERE flow_status * 4 + check_flag";
    view.joins = {
        {Jobs, 0, "LEFT JOIN jobs j ON j.name = f.job_name"},
        {Executor, 0, "LEFT JOIN orig_file_assign oa ON oa.flow_id = f.id"},
        {ExecutorUser, Executor, "LEFT JOIN users ou ON ou.id = oa.executor_id"},
        {Checker, 0, "LEFT JOIN pre_check_assign pa ON pa.flow_id = f.id"},
        {CheckerUser, Checker, "LEFT JOIN users pu ON pu.id = pa.executor_id"},
        {Original, 0, "LEFT JOIN orig_files o ON o.id = f.orig_file_id"},
        {Imported, 0, "LEFT JOIN orig_files i ON i.id = f.last_import_file_id"},
        {Order, 0, "LEFT JOIN orders r ON r.flow_id = f.id"},
    };
    view.fields = {
        {"Flow_Id", number, "f.id", 0, -1, "SELECT id FROM job_flows WHERE id"},
        neverNull(
            {"KoJobName", text, "f.job_name", 0, -1, "SELECT id FROM job_flows WHERE job_name"}),
        {"Flow_OrigJobName", text, "f.orig_job_name", 0},
        {"Flow_OrigUploadTime", text, "o.create_time", Original},
        {"Flow_OdbppUploadTime", text, "f.last_import_time", 0},
        {"Flow_OdbppUploaded", number, isImported, 0, 1},
        {"JobTable_LayerCount", number, "j.layer_count", Jobs, -1, byLayers},
        {"JobTable_FeatureCount", number, "j.feature_count", Jobs, -1, byFeatures},
        withSet({"JobTable_CreateUserId", number, "j.create_user_id", Jobs, -1, byJobCreator},
                "SELECT name FROM jobs WHERE create_user_id", "f.job_name || ''"),
        {"Flow_FlowStatus", number, "f.flow_status", 0, 3},
        {"Flow_CheckFlag", number, "f.check_flag", 0, 2},
        {"Flow_PreCheckTime", text, "f.check_time", 0},
        {"Flow_FlowGUID", text, "f.guid", 0, -1, "SELECT id FROM job_flows WHERE guid"},
        {"PreUserRealName_OFAssign_Executor", text, "ou.real_name", ExecutorUser, -1, byExecutor,
         "users", "real_name", "oa.executor_id", Executor},
        {"PreCheckUserRealName_PCAssign_Executor", text, "pu.real_name", CheckerUser, -1, byChecker,
         "users", "real_name", "pa.executor_id", Checker},
        {"Flow_Tips", text, "f.tips", 0},
        {"Flow_FileUuid", text, "COALESCE(i.stored_name, o.stored_name)", Original | Imported},
        {"Flow_WebFlag", number, isWeb, 0, 1},
        {"Order_Suffix", text, "r.suffix", Order},
        {"OrigFile_Suffix", text, "COALESCE(i.file_type, o.file_type)", Original | Imported},
        {"Flow_UploadBatchNum", number, "f.batch_number", 0},
        neverNull({"Flow_CreateTime", text, "f.create_time", 0}),
        withSet({"Flow_CreateUserId", number, "f.create_user_id", 0, -1, byCreator}, byCreator,
                plainId),
        withSet({"Flow_LastOdbppImportUserId", number, "f.last_import_user_id", 0, -1, byImporter},
                byImporter, plainId),
        withSet({"OFAssign_ExecutorId", number, "oa.executor_id", Executor, -1, byExecutor},
                byExecutor, plainId),
        withSet({"PCAssign_ExecutorId", number, "pa.executor_id", Checker, -1, byChecker},
                byChecker, plainId),
    };
    return view;
}

} // namespace

const SearchView &SearchView::flows()
{
    static const SearchView view = makeView();
    return view;
}

} // namespace KODMS::Services
