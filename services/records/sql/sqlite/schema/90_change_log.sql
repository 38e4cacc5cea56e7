-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- A change of what can be searched becomes a change of the rows that show it. What no search
-- asks for (files, verdicts' times, versions, orders) writes no entry: a reader of the log has
-- nothing to read again.
CREATE TRIGGER job_flows_insert_log AFTER INSERT ON job_flows
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (1, NEW.id, 1);
END;

CREATE TRIGGER job_flows_update_log AFTER UPDATE OF
    job_name, orig_job_name, flow_status, check_flag, batch_number, tips,
    create_user_id, create_time, last_import_user_id, last_import_time ON job_flows
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (1, NEW.id, 2);
END;

CREATE TRIGGER job_flows_delete_log AFTER DELETE ON job_flows
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (1, OLD.id, 3);
END;

CREATE TRIGGER job_compress_insert_log AFTER INSERT ON job_compress
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (2, NEW.id, 1);
END;

CREATE TRIGGER job_compress_update_log AFTER UPDATE OF
    flow_id, customer_id, serial_number, orig_name, description, tips, flow_create_time
    ON job_compress
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (2, NEW.id, 2);
END;

CREATE TRIGGER job_compress_delete_log AFTER DELETE ON job_compress
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (2, OLD.id, 3);
END;

CREATE TRIGGER customers_insert_log AFTER INSERT ON customers
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (3, NEW.id, 1);
END;

CREATE TRIGGER customers_update_log AFTER UPDATE OF code, short_name, superior_1, superior_2 ON customers
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (3, NEW.id, 2);
END;

CREATE TRIGGER users_insert_log AFTER INSERT ON users
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (4, NEW.id, 1);
END;

CREATE TRIGGER users_update_log AFTER UPDATE OF real_name ON users
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (4, NEW.id, 2);
END;

CREATE TRIGGER job_flows_create_time_copy AFTER UPDATE OF create_time ON job_flows
BEGIN
    UPDATE job_compress SET flow_create_time = NEW.create_time WHERE flow_id = NEW.id;
END;

CREATE TRIGGER jobs_update_log AFTER UPDATE OF name, layer_count, feature_count, create_user_id ON jobs
BEGIN
    INSERT INTO change_log (kind, row_id, op) SELECT 1, id, 2 FROM job_flows WHERE job_name = NEW.name;
END;

CREATE TRIGGER orig_file_assign_insert_log AFTER INSERT ON orig_file_assign
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (1, NEW.flow_id, 2);
    INSERT INTO change_log (kind, row_id, op) SELECT 2, id, 2 FROM job_compress WHERE flow_id = NEW.flow_id;
END;

CREATE TRIGGER pre_check_assign_insert_log AFTER INSERT ON pre_check_assign
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (1, NEW.flow_id, 2);
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

CREATE TRIGGER orig_file_assign_delete_log AFTER DELETE ON orig_file_assign
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (1, OLD.flow_id, 2);
    INSERT INTO change_log (kind, row_id, op) SELECT 2, id, 2 FROM job_compress WHERE flow_id = OLD.flow_id;
END;

CREATE TRIGGER pre_check_assign_delete_log AFTER DELETE ON pre_check_assign
BEGIN
    INSERT INTO change_log (kind, row_id, op) VALUES (1, OLD.flow_id, 2);
END;
