// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::UI::SearchField {

// Fields of the flow view.
constexpr char JobName[] = "KoJobName";
constexpr char LayerCount[] = "JobTable_LayerCount";
constexpr char FeatureCount[] = "JobTable_FeatureCount";
constexpr char ExecutorName[] = "PreUserRealName_OFAssign_Executor";
constexpr char BatchNumber[] = "Flow_UploadBatchNum";
constexpr char FlowStatus[] = "Flow_FlowStatus";
constexpr char CheckFlag[] = "Flow_CheckFlag";
constexpr char JobCreator[] = "JobTable_CreateUserId";
constexpr char FlowCreator[] = "Flow_CreateUserId";
constexpr char OrigFileExecutor[] = "OFAssign_ExecutorId";
constexpr char PreCheckExecutor[] = "PCAssign_ExecutorId";
constexpr char LastImporter[] = "Flow_LastOdbppImportUserId";
constexpr char FlowCreateTime[] = "Flow_CreateTime";

// Fields of the original-file view.
constexpr char OrigName[] = "OrigName";
constexpr char CustomerName[] = "KoName";
constexpr char CustomerCode[] = "KoCode";
constexpr char FileRemark[] = "FileTips";
constexpr char CustomerLevelTwo[] = "SuperiorCo1";
constexpr char CustomerLevelThree[] = "SuperiorCo2";
constexpr char FileExecutorName[] = "PreUser_RealName";
constexpr char FileExecutorId[] = "PreUser_id";
constexpr char SerialNumber[] = "JobSerialNumber";
constexpr char FileCreateTime[] = "FlowTable_CreateTime";

} // namespace KODMS::UI::SearchField
