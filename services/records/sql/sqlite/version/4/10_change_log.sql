-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Only what can be searched is logged: orders are not, and of the other tables only the columns
-- that a search asks for.
DROP TRIGGER orders_insert_log;

DROP TRIGGER orders_update_log;

DROP TRIGGER orders_delete_log;

DROP TRIGGER job_flows_update_log;

DROP TRIGGER job_compress_update_log;

DROP TRIGGER jobs_update_log;

DROP TRIGGER orig_file_assign_update_log;

DROP TRIGGER pre_check_assign_update_log;

CREATE TRIGGER job_flows_update_log AFTER UPDATE OF
    job_name, orig_job_name, flow_status, check_flag, batch_number, tips,
    create_user_id, create_time, last_import_user_id, last_import_time ON job_flows
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (1, NEW.id, 2);
END;

CREATE TRIGGER job_compress_update_log AFTER UPDATE OF
    flow_id, customer_id, serial_number, orig_name, description, tips, flow_create_time
    ON job_compress
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (2, NEW.id, 2);
END;

CREATE TRIGGER jobs_update_log AFTER UPDATE OF name, layer_count, feature_count, create_user_id ON jobs
BEGIN
    INSERT INTO change_log (kind, row_id, op) SELECT 1, id, 2 FROM job_flows WHERE job_name = NEW.name;
END;

CREATE TRIGGER orig_file_assign_update_log AFTER UPDATE OF executor_id ON orig_file_assign
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (1, NEW.flow_id, 2);
    INSERT INTO change_log (kind, row_id, op) SELECT 2, id, 2 FROM job_compress WHERE flow_id = NEW.flow_id;
END;

CREATE TRIGGER pre_check_assign_update_log AFTER UPDATE OF executor_id ON pre_check_assign
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (1, NEW.flow_id, 2);
END;
