-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The job-flow desk's rows, under the field names that condition lists use.
CREATE VIEW flow_view AS
SELECT f.id AS Flow_Id,
       f.job_name AS KoJobName,
       f.orig_job_name AS Flow_OrigJobName,
       o.create_time AS Flow_OrigUploadTime,
       f.last_import_time AS Flow_OdbppUploadTime,
       CASE WHEN f.last_import_time IS NULL THEN 0 ELSE 1 END AS Flow_OdbppUploaded,
       j.layer_count AS JobTable_LayerCount,
       j.feature_count AS JobTable_FeatureCount,
       f.flow_status AS Flow_FlowStatus,
       f.check_flag AS Flow_CheckFlag,
       f.check_time AS Flow_PreCheckTime,
       f.guid AS Flow_FlowGUID,
       ou.real_name AS PreUserRealName_OFAssign_Executor,
       pu.real_name AS PreCheckUserRealName_PCAssign_Executor,
       f.tips AS Flow_Tips,
       COALESCE(i.stored_name, o.stored_name) AS Flow_FileUuid,
       CASE WHEN lower(f.job_name) LIKE 'web%' THEN 1 ELSE 0 END AS Flow_WebFlag,
       r.suffix AS Order_Suffix,
       COALESCE(i.file_type, o.file_type) AS OrigFile_Suffix,
       f.batch_number AS Flow_UploadBatchNum,
       f.create_time AS Flow_CreateTime,
       f.create_user_id AS Flow_CreateUserId,
       f.last_import_user_id AS Flow_LastOdbppImportUserId,
       j.create_user_id AS JobTable_CreateUserId,
       oa.executor_id AS OFAssign_ExecutorId,
       pa.executor_id AS PCAssign_ExecutorId,
       f.state_version AS state_version,
       f.file_version AS file_version,
       f.assignment_version AS assignment_version,
       f.remark_version AS remark_version
FROM job_flows f
JOIN jobs j ON j.name = f.job_name
LEFT JOIN orig_files o ON o.id = f.orig_file_id
LEFT JOIN orig_files i ON i.id = f.last_import_file_id
LEFT JOIN orders r ON r.flow_id = f.id
LEFT JOIN orig_file_assign oa ON oa.flow_id = f.id
LEFT JOIN users ou ON ou.id = oa.executor_id
LEFT JOIN pre_check_assign pa ON pa.flow_id = f.id
LEFT JOIN users pu ON pu.id = pa.executor_id;

-- The original-file desk's rows.
CREATE VIEW orig_file_view AS
SELECT c.id AS OrigFile_Id,
       c.orig_name AS OrigName,
       k.short_name AS KoName,
       k.code AS KoCode,
       o.file_type AS FileType,
       c.serial_number AS JobSerialNumber,
       o.stored_name AS FileUuid,
       c.description AS FileDescription,
       c.tips AS FileTips,
       f.guid AS Flow_FlowGUID,
       k.superior_1 AS SuperiorCo1,
       k.superior_2 AS SuperiorCo2,
       c.update_time AS UpdateTime,
       c.create_time AS CreateTime,
       ou.real_name AS PreUser_RealName,
       oa.executor_id AS PreUser_id,
       c.flow_create_time AS FlowTable_CreateTime,
       f.id AS Flow_Id,
       f.state_version AS state_version,
       f.file_version AS file_version,
       f.assignment_version AS assignment_version,
       f.remark_version AS remark_version
FROM job_compress c
JOIN job_flows f ON f.id = c.flow_id
JOIN customers k ON k.id = c.customer_id
LEFT JOIN orig_files o ON o.id = c.orig_file_id
LEFT JOIN orig_file_assign oa ON oa.flow_id = c.flow_id
LEFT JOIN users ou ON ou.id = oa.executor_id;
