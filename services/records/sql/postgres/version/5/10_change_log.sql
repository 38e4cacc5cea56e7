-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The first databases of version 4 on a server logged every change of a row, searched or not,
-- and told nobody of an event that changed nothing else.
DROP TRIGGER IF EXISTS job_flows_log ON job_flows;

CREATE TRIGGER job_flows_log
    AFTER INSERT OR DELETE OR UPDATE OF job_name, orig_job_name, flow_status, check_flag,
        batch_number, tips, create_user_id, create_time, last_import_user_id, last_import_time
    ON job_flows
    FOR EACH ROW EXECUTE FUNCTION log_row_change('1');

DROP TRIGGER IF EXISTS job_compress_log ON job_compress;

CREATE TRIGGER job_compress_log
    AFTER INSERT OR DELETE OR UPDATE OF flow_id, customer_id, serial_number, orig_name,
        description, tips, flow_create_time
    ON job_compress
    FOR EACH ROW EXECUTE FUNCTION log_row_change('2');

DROP TRIGGER IF EXISTS jobs_log ON jobs;

CREATE TRIGGER jobs_log AFTER UPDATE OF name, layer_count, feature_count, create_user_id ON jobs
    FOR EACH ROW EXECUTE FUNCTION log_job_change();

DROP TRIGGER IF EXISTS orig_file_assign_log ON orig_file_assign;

CREATE TRIGGER orig_file_assign_log
    AFTER INSERT OR DELETE OR UPDATE OF executor_id ON orig_file_assign
    FOR EACH ROW EXECUTE FUNCTION log_assignment_change();

DROP TRIGGER IF EXISTS pre_check_assign_log ON pre_check_assign;

CREATE TRIGGER pre_check_assign_log
    AFTER INSERT OR DELETE OR UPDATE OF executor_id ON pre_check_assign
    FOR EACH ROW EXECUTE FUNCTION log_assignment_change();

DROP TRIGGER IF EXISTS events_notify ON events;

CREATE TRIGGER events_notify AFTER INSERT ON events
    FOR EACH STATEMENT EXECUTE FUNCTION notify_changes();
