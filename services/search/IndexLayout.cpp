// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexLayout.h"

#include "services/records/conditions/SearchView.h"

#include <algorithm>
#include <cstring>

namespace KODMS::Services {

namespace {

using Kind = IndexLayout::Field::Kind;
using Records = IndexDictionaries::Kind;

IndexLayout makeFlows()
{
    enum Number : std::size_t {
        Layers,
        Features,
        JobCreator,
        Status,
        Flag,
        Batch,
        Creator,
        Importer,
        Executor,
        Checker,
        IsImported,
        IsWeb
    };

    enum Text : std::size_t { JobName, OrigJobName, Tips };

    IndexLayout layout;
    layout.table = "job_flows";
    layout.allRows = "select_index_flows";
    layout.someRows = "select_index_flows_by_id";
    layout.orderField = "Flow_CreateTime";
    layout.changeKind = 1;
    layout.numbers = {{"layer_count"},
                      {"feature_count"},
                      {"job_create_user_id", Records::People},
                      {"flow_status"},
                      {"check_flag"},
                      {"batch_number"},
                      {"create_user_id", Records::People},
                      {"last_import_user_id", Records::People},
                      {"executor_id", Records::People},
                      {"checker_id", Records::People},
                      {"is_imported"},
                      {"is_web"}};
    layout.texts = {"job_name", "orig_job_name", "tips"};
    layout.fields = {{"Flow_Id", Kind::Id},
                     {"KoJobName", Kind::Text, JobName},
                     {"Flow_OrigJobName", Kind::Text, OrigJobName},
                     {"Flow_Tips", Kind::Text, Tips},
                     {"Flow_OdbppUploaded", Kind::Number, IsImported},
                     {"Flow_WebFlag", Kind::Number, IsWeb},
                     {"JobTable_LayerCount", Kind::Number, Layers},
                     {"JobTable_FeatureCount", Kind::Number, Features},
                     {"Flow_FlowStatus", Kind::Number, Status},
                     {"Flow_CheckFlag", Kind::Number, Flag},
                     {"Flow_UploadBatchNum", Kind::Number, Batch},
                     {"JobTable_CreateUserId", Kind::Key, JobCreator},
                     {"Flow_CreateUserId", Kind::Key, Creator},
                     {"Flow_LastOdbppImportUserId", Kind::Key, Importer},
                     {"OFAssign_ExecutorId", Kind::Key, Executor},
                     {"PCAssign_ExecutorId", Kind::Key, Checker},
                     {"PreUserRealName_OFAssign_Executor", Kind::RecordText, Executor},
                     {"PreCheckUserRealName_PCAssign_Executor", Kind::RecordText, Checker}};
    return layout;
}

IndexLayout makeOrigFiles()
{
    enum Number : std::size_t { Serial, Customer, Executor };

    enum Text : std::size_t { OrigName, Description, Tips };

    enum CustomerText : std::size_t { ShortName, Code, Superior1, Superior2 };

    IndexLayout layout;
    layout.table = "job_compress";
    layout.allRows = "select_index_orig_files";
    layout.someRows = "select_index_orig_files_by_id";
    layout.orderField = "FlowTable_CreateTime";
    layout.changeKind = 2;
    layout.numbers = {
        {"serial_number"}, {"customer_id", Records::Customers}, {"executor_id", Records::People}};
    layout.texts = {"orig_name", "description", "tips"};
    layout.fields = {{"OrigFile_Id", Kind::Id},
                     {"OrigName", Kind::Text, OrigName},
                     {"FileDescription", Kind::Text, Description},
                     {"FileTips", Kind::Text, Tips},
                     {"JobSerialNumber", Kind::Number, Serial},
                     {"KoName", Kind::RecordText, Customer, ShortName},
                     {"KoCode", Kind::RecordText, Customer, Code},
                     {"SuperiorCo1", Kind::RecordText, Customer, Superior1},
                     {"SuperiorCo2", Kind::RecordText, Customer, Superior2},
                     {"PreUser_id", Kind::Key, Executor},
                     {"PreUser_RealName", Kind::RecordText, Executor}};
    return layout;
}

} // namespace

const IndexLayout::Field *IndexLayout::field(const char *name) const
{
    const auto found = std::find_if(fields.begin(), fields.end(), [name](const Field &field) {
        return std::strcmp(field.name, name) == 0;
    });
    return found == fields.end() ? nullptr : &*found;
}

const IndexLayout &IndexLayout::of(const SearchView &view)
{
    return &view == &SearchView::flows() ? flows() : origFiles();
}

const IndexLayout &IndexLayout::flows()
{
    static const IndexLayout layout = makeFlows();
    return layout;
}

const IndexLayout &IndexLayout::origFiles()
{
    static const IndexLayout layout = makeOrigFiles();
    return layout;
}

} // namespace KODMS::Services
