-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- :ids: with commas between them.
SELECT f.id AS row_id,
       f.create_time AS row_time,
       j.layer_count AS layer_count,
       j.feature_count AS feature_count,
       j.create_user_id AS job_create_user_id,
       f.flow_status AS flow_status,
       f.check_flag AS check_flag,
       f.batch_number AS batch_number,
       f.create_user_id AS create_user_id,
       f.last_import_user_id AS last_import_user_id,
       oa.executor_id AS executor_id,
       pa.executor_id AS checker_id,
       CASE WHEN f.last_import_time IS NULL THEN 0 ELSE 1 END AS is_imported,
       CASE WHEN lower(f.job_name) LIKE 'web%' THEN 1 ELSE 0 END AS is_web,
       f.job_name AS job_name,
       f.orig_job_name AS orig_job_name,
       f.tips AS tips
FROM job_flows f
LEFT JOIN jobs j ON j.name = f.job_name
LEFT JOIN orig_file_assign oa ON oa.flow_id = f.id
LEFT JOIN pre_check_assign pa ON pa.flow_id = f.id
WHERE f.id IN (SELECT value FROM json_each('[' || :ids || ']'))
