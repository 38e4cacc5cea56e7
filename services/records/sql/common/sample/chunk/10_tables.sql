-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO jobs (name, customer_id, serial_number, layer_count, feature_count, pre_check_flag,
                  check_flag, create_user_id, create_time)
SELECT job_name, customer_id, serial_number, layer_count, feature_count,
       CASE WHEN reviewer IS NULL THEN 0 WHEN flow_status = 1 THEN check_flag ELSE 2 END,
       CASE WHEN flow_status = 1 THEN check_flag WHEN flow_status = 0 THEN 0
            WHEN check_flag = 1 THEN 1 ELSE 2 END,
       creator, create_time
FROM sample_flows ORDER BY id;

INSERT INTO job_flows (id, guid, job_name, orig_job_name, flow_status, check_flag, batch_number,
                       tips, orig_file_id, last_import_file_id, result_file_id, create_user_id,
                       create_time, last_import_user_id, last_import_time, check_user_id,
                       check_time, robot_check_user_id, robot_check_time, result_time)
SELECT id, guid, job_name, orig_job_name, flow_status, check_flag, batch_number, remark,
       orig_file_id, import_file_id, result_file_id, creator, create_time, importer, import_time,
       reviewer, check_time, robot_reviewer, robot_check_time,
       CASE WHEN result_file_id IS NULL THEN NULL ELSE COALESCE(robot_check_time, check_time) END
FROM sample_flows ORDER BY id;

INSERT INTO job_compress (flow_id, customer_id, serial_number, orig_name, description, tips,
                          orig_file_id, flow_create_time, create_time, update_time,
                          update_user_id)
SELECT id, customer_id, serial_number, orig_name, description, source_tips, orig_file_id,
       create_time, create_time, create_time, creator
FROM sample_flows ORDER BY id;

INSERT INTO orders (flow_id, payment, suffix, pay_time, create_time)
SELECT id, payment, file_type, CASE WHEN payment = 1 THEN assign_time END, create_time
FROM sample_flows ORDER BY id;

INSERT INTO orig_file_assign (flow_id, executor_id, assign_user_id, assign_time)
SELECT id, executor, creator, assign_time FROM sample_flows
WHERE executor IS NOT NULL ORDER BY id;

INSERT INTO pre_check_assign (flow_id, executor_id, assign_user_id, assign_time)
SELECT id, checker, creator, assign_time FROM sample_flows
WHERE checker IS NOT NULL ORDER BY id;

INSERT INTO questions (flow_id, title, description, check_flag, create_user_id, create_time)
SELECT flow_id, title, description, check_flag, creator, create_time FROM sample_questions
ORDER BY flow_id, title;

DELETE FROM sample_questions;

DELETE FROM sample_flows;
