-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT f.id, f.guid, f.job_name, f.orig_job_name, f.flow_status, f.check_flag, f.tips,
       f.create_user_id, f.orig_file_id, o.guid AS orig_file_guid,
       o.stored_name AS orig_stored_name, f.last_import_file_id,
       i.stored_name AS import_stored_name, i.file_type AS import_type, f.result_file_id,
       f.last_import_user_id, f.last_import_time, f.check_user_id, f.check_time,
       f.robot_check_user_id, f.robot_check_time, f.state_version, f.file_version,
       f.assignment_version, f.remark_version, oa.executor_id, pa.executor_id AS checker_id,
       c.id AS job_compress_id, k.code AS customer_code
FROM job_flows f
JOIN jobs j ON j.name = f.job_name
JOIN customers k ON k.id = j.customer_id
LEFT JOIN orig_files o ON o.id = f.orig_file_id
LEFT JOIN orig_files i ON i.id = f.last_import_file_id
LEFT JOIN orig_file_assign oa ON oa.flow_id = f.id
LEFT JOIN pre_check_assign pa ON pa.flow_id = f.id
LEFT JOIN job_compress c ON c.flow_id = f.id
WHERE f.id = :id
