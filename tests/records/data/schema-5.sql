-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The schema of version 5, as it was installed. Never changed: databases of that version exist.

CREATE TABLE schema_version (
    version INTEGER PRIMARY KEY,
    applied_time TEXT NOT NULL
);

CREATE TABLE users (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    login_name TEXT NOT NULL,
    real_name TEXT NOT NULL,
    department INTEGER NOT NULL DEFAULT 0,
    post INTEGER NOT NULL DEFAULT 0,
    password_hash TEXT NOT NULL DEFAULT '',
    disabled INTEGER NOT NULL DEFAULT 0,
    last_sign_in_time TEXT,
    create_time TEXT NOT NULL
);

CREATE UNIQUE INDEX users_login_name ON users (lower(login_name));

CREATE TABLE user_roles (
    user_id INTEGER NOT NULL REFERENCES users (id),
    role TEXT NOT NULL,
    PRIMARY KEY (user_id, role)
);

CREATE TABLE sign_in_failures (
    login_name TEXT PRIMARY KEY,
    failures INTEGER NOT NULL,
    last_time TEXT NOT NULL
);

CREATE TABLE customers (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    code TEXT NOT NULL,
    short_name TEXT NOT NULL DEFAULT '',
    superior_1 TEXT NOT NULL DEFAULT '',
    superior_2 TEXT NOT NULL DEFAULT '',
    last_serial INTEGER NOT NULL DEFAULT 0,
    create_time TEXT NOT NULL
);

CREATE UNIQUE INDEX customers_code ON customers (lower(code));

CREATE TABLE jobs (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL UNIQUE,
    customer_id INTEGER NOT NULL REFERENCES customers (id),
    serial_number INTEGER NOT NULL,
    layer_count INTEGER NOT NULL DEFAULT 0,
    feature_count INTEGER NOT NULL DEFAULT 0,
    pre_check_flag INTEGER NOT NULL DEFAULT 0,
    check_flag INTEGER NOT NULL DEFAULT 0,
    create_user_id INTEGER REFERENCES users (id),
    create_time TEXT NOT NULL
);

CREATE TABLE robot_params (
    job_name TEXT PRIMARY KEY REFERENCES jobs (name) ON UPDATE CASCADE,
    params TEXT NOT NULL DEFAULT '',
    update_time TEXT NOT NULL
);

CREATE TABLE orig_files (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    guid TEXT NOT NULL UNIQUE,
    base_name TEXT NOT NULL DEFAULT '',
    stored_name TEXT NOT NULL UNIQUE,
    file_type TEXT NOT NULL DEFAULT '',
    customer_code TEXT NOT NULL DEFAULT '',
    kind INTEGER NOT NULL DEFAULT 0 CHECK (kind BETWEEN 0 AND 2),
    state INTEGER NOT NULL DEFAULT 0,
    has_body INTEGER NOT NULL DEFAULT 1,
    create_user_id INTEGER REFERENCES users (id),
    create_time TEXT NOT NULL
);

CREATE TABLE file_delete_marks (
    stored_name TEXT PRIMARY KEY,
    final INTEGER NOT NULL DEFAULT 0,
    user_id INTEGER REFERENCES users (id),
    mark_time TEXT NOT NULL
);

CREATE TABLE job_flows (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    guid TEXT NOT NULL UNIQUE,
    job_name TEXT NOT NULL UNIQUE REFERENCES jobs (name) ON UPDATE CASCADE,
    orig_job_name TEXT NOT NULL DEFAULT '',
    flow_status INTEGER NOT NULL DEFAULT 0 CHECK (flow_status BETWEEN 0 AND 3),
    check_flag INTEGER NOT NULL DEFAULT 0 CHECK (check_flag BETWEEN 0 AND 2),
    batch_number INTEGER NOT NULL DEFAULT 0,
    tips TEXT NOT NULL DEFAULT '',
    orig_file_id INTEGER REFERENCES orig_files (id),
    last_import_file_id INTEGER REFERENCES orig_files (id),
    result_file_id INTEGER REFERENCES orig_files (id),
    create_user_id INTEGER REFERENCES users (id),
    create_time TEXT NOT NULL,
    last_import_user_id INTEGER REFERENCES users (id),
    last_import_time TEXT,
    check_user_id INTEGER REFERENCES users (id),
    check_time TEXT,
    robot_check_user_id INTEGER REFERENCES users (id),
    robot_check_time TEXT,
    result_time TEXT,
    state_version INTEGER NOT NULL DEFAULT 0,
    file_version INTEGER NOT NULL DEFAULT 0,
    assignment_version INTEGER NOT NULL DEFAULT 0,
    remark_version INTEGER NOT NULL DEFAULT 0
);

CREATE TABLE job_compress (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    flow_id INTEGER NOT NULL UNIQUE REFERENCES job_flows (id),
    customer_id INTEGER NOT NULL REFERENCES customers (id),
    serial_number INTEGER NOT NULL,
    orig_name TEXT NOT NULL DEFAULT '',
    description TEXT NOT NULL DEFAULT '',
    tips TEXT NOT NULL DEFAULT '',
    orig_file_id INTEGER REFERENCES orig_files (id),
    flow_create_time TEXT NOT NULL,
    create_time TEXT NOT NULL,
    update_time TEXT NOT NULL,
    update_user_id INTEGER REFERENCES users (id)
);

CREATE TABLE orders (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    flow_id INTEGER NOT NULL UNIQUE REFERENCES job_flows (id),
    payment INTEGER NOT NULL DEFAULT 0,
    suffix TEXT NOT NULL DEFAULT '',
    pay_time TEXT,
    create_time TEXT NOT NULL
);

CREATE TABLE questions (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    flow_id INTEGER NOT NULL REFERENCES job_flows (id),
    title TEXT NOT NULL DEFAULT '',
    description TEXT NOT NULL DEFAULT '',
    answer TEXT NOT NULL DEFAULT '',
    check_flag INTEGER NOT NULL DEFAULT 0 CHECK (check_flag BETWEEN 0 AND 3),
    create_user_id INTEGER REFERENCES users (id),
    create_time TEXT NOT NULL,
    update_user_id INTEGER REFERENCES users (id),
    update_time TEXT
);

CREATE TABLE question_pictures (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    question_id INTEGER NOT NULL REFERENCES questions (id),
    stored_name TEXT NOT NULL UNIQUE,
    file_name TEXT NOT NULL DEFAULT '',
    create_user_id INTEGER REFERENCES users (id),
    create_time TEXT NOT NULL
);

CREATE TABLE import_contents (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    sha256 TEXT NOT NULL,
    flow_id INTEGER NOT NULL REFERENCES job_flows (id),
    user_id INTEGER REFERENCES users (id),
    import_time TEXT NOT NULL
);

CREATE TABLE orig_file_assign (
    flow_id INTEGER PRIMARY KEY REFERENCES job_flows (id),
    executor_id INTEGER NOT NULL REFERENCES users (id),
    assign_user_id INTEGER REFERENCES users (id),
    assign_time TEXT NOT NULL
);

CREATE TABLE pre_check_assign (
    flow_id INTEGER PRIMARY KEY REFERENCES job_flows (id),
    executor_id INTEGER NOT NULL REFERENCES users (id),
    assign_user_id INTEGER REFERENCES users (id),
    assign_time TEXT NOT NULL
);

CREATE TABLE events (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    create_time TEXT NOT NULL,
    user_id INTEGER REFERENCES users (id),
    action TEXT NOT NULL,
    record_kind TEXT NOT NULL DEFAULT '',
    record_id INTEGER,
    record_name TEXT NOT NULL DEFAULT '',
    before_value TEXT NOT NULL DEFAULT '',
    after_value TEXT NOT NULL DEFAULT '',
    refused INTEGER NOT NULL DEFAULT 0
);

CREATE TABLE change_log (
    seq INTEGER PRIMARY KEY AUTOINCREMENT,
    kind INTEGER NOT NULL,
    row_id INTEGER NOT NULL,
    op INTEGER NOT NULL
);

CREATE INDEX job_flows_order
    ON job_flows (create_time, id, job_name, flow_status, check_flag, batch_number);

CREATE INDEX job_flows_state ON job_flows (flow_status * 4 + check_flag);

CREATE INDEX job_compress_order
    ON job_compress (flow_create_time, id, flow_id, customer_id, serial_number, orig_name, tips);

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
