-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
CREATE INDEX job_flows_create_user ON job_flows (create_user_id);

CREATE INDEX job_flows_import_user ON job_flows (last_import_user_id);

CREATE INDEX job_flows_orig_file ON job_flows (orig_file_id);

CREATE INDEX job_flows_import_file ON job_flows (last_import_file_id)
    WHERE last_import_file_id IS NOT NULL;

CREATE INDEX job_flows_result_file ON job_flows (result_file_id)
    WHERE result_file_id IS NOT NULL;

CREATE INDEX jobs_customer ON jobs (customer_id, serial_number);

CREATE INDEX jobs_create_user ON jobs (create_user_id, name);

CREATE INDEX jobs_layers ON jobs (layer_count, name);

CREATE INDEX jobs_features ON jobs (feature_count, name);

CREATE INDEX job_compress_customer ON job_compress (customer_id, serial_number);

CREATE INDEX job_compress_serial ON job_compress (serial_number);

CREATE INDEX job_compress_orig_file ON job_compress (orig_file_id);

CREATE INDEX orig_file_assign_executor ON orig_file_assign (executor_id, flow_id);

CREATE INDEX pre_check_assign_executor ON pre_check_assign (executor_id, flow_id);

CREATE INDEX questions_flow ON questions (flow_id);

CREATE INDEX question_pictures_question ON question_pictures (question_id);

CREATE INDEX import_contents_sha256 ON import_contents (sha256, flow_id);

CREATE INDEX events_record ON events (record_kind, record_id);
