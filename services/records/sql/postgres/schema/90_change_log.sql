-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- A change of what can be searched becomes a change of the rows that show it. What no search
-- asks for (files, verdicts' times, versions, orders) writes no entry: a reader of the log has
-- nothing to read again.
CREATE FUNCTION log_row_change() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
    IF TG_OP = 'DELETE' THEN
        INSERT INTO change_log (kind, row_id, op) VALUES (CAST(TG_ARGV[0] AS INTEGER), OLD.id, 3);
    ELSIF TG_OP = 'UPDATE' THEN
        INSERT INTO change_log (kind, row_id, op) VALUES (CAST(TG_ARGV[0] AS INTEGER), NEW.id, 2);
    ELSE
        INSERT INTO change_log (kind, row_id, op) VALUES (CAST(TG_ARGV[0] AS INTEGER), NEW.id, 1);
    END IF;
    RETURN NULL;
END;
$$;

-- An assignment is shown with its flow, that of an executor in both views.
CREATE FUNCTION log_assignment_change() RETURNS trigger LANGUAGE plpgsql AS $$
DECLARE
    flow INTEGER;
BEGIN
    IF TG_OP = 'DELETE' THEN
        flow := OLD.flow_id;
    ELSE
        flow := NEW.flow_id;
    END IF;
    INSERT INTO change_log (kind, row_id, op) VALUES (1, flow, 2);
    IF TG_TABLE_NAME = 'orig_file_assign' THEN
        INSERT INTO change_log (kind, row_id, op)
        SELECT 2, c.id, 2 FROM job_compress c WHERE c.flow_id = flow;
    END IF;
    RETURN NULL;
END;
$$;

CREATE FUNCTION log_job_change() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
    INSERT INTO change_log (kind, row_id, op)
    SELECT 1, f.id, 2 FROM job_flows f WHERE f.job_name = NEW.name;
    RETURN NULL;
END;
$$;

CREATE FUNCTION copy_flow_create_time() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
    UPDATE job_compress SET flow_create_time = NEW.create_time WHERE flow_id = NEW.id;
    RETURN NULL;
END;
$$;

-- Whoever listens hears of it once a transaction, when it is on the disk.
CREATE FUNCTION notify_changes() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
    PERFORM pg_notify('kodms_changes', '');
    RETURN NULL;
END;
$$;

CREATE TRIGGER job_flows_log
    AFTER INSERT OR DELETE OR UPDATE OF job_name, orig_job_name, flow_status, check_flag,
        batch_number, tips, create_user_id, create_time, last_import_user_id, last_import_time
    ON job_flows
    FOR EACH ROW EXECUTE FUNCTION log_row_change('1');

CREATE TRIGGER job_flows_create_time_copy AFTER UPDATE OF create_time ON job_flows
    FOR EACH ROW EXECUTE FUNCTION copy_flow_create_time();

CREATE TRIGGER job_compress_log
    AFTER INSERT OR DELETE OR UPDATE OF flow_id, customer_id, serial_number, orig_name,
        description, tips, flow_create_time
    ON job_compress
    FOR EACH ROW EXECUTE FUNCTION log_row_change('2');

CREATE TRIGGER customers_log
    AFTER INSERT OR UPDATE OF code, short_name, superior_1, superior_2 ON customers
    FOR EACH ROW EXECUTE FUNCTION log_row_change('3');

CREATE TRIGGER users_log AFTER INSERT OR UPDATE OF real_name ON users
    FOR EACH ROW EXECUTE FUNCTION log_row_change('4');

CREATE TRIGGER jobs_log AFTER UPDATE OF name, layer_count, feature_count, create_user_id ON jobs
    FOR EACH ROW EXECUTE FUNCTION log_job_change();

CREATE TRIGGER orig_file_assign_log
    AFTER INSERT OR DELETE OR UPDATE OF executor_id ON orig_file_assign
    FOR EACH ROW EXECUTE FUNCTION log_assignment_change();

CREATE TRIGGER pre_check_assign_log
    AFTER INSERT OR DELETE OR UPDATE OF executor_id ON pre_check_assign
    FOR EACH ROW EXECUTE FUNCTION log_assignment_change();

CREATE TRIGGER change_log_notify AFTER INSERT ON change_log
    FOR EACH STATEMENT EXECUTE FUNCTION notify_changes();

CREATE TRIGGER events_notify AFTER INSERT ON events
    FOR EACH STATEMENT EXECUTE FUNCTION notify_changes();
