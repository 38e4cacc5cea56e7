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
constexpr char FlowCreateTime[] = "Flow_CreateTime";

} // namespace KODMS::UI::SearchField
