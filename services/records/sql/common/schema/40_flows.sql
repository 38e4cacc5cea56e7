-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Every stored file, by GUID; a row is never overwritten.
-- kind: 0 original, 1 imported job, 2 robot's result.
-- has_body: 0 only for generated sample records that have no file in the store.
CREATE TABLE orig_files (
    id @identity@,
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

-- Stored files on their way out. final: 0 marked only (undone at the next start),
-- 1 the record is gone and the stored file has to follow.
CREATE TABLE file_delete_marks (
    stored_name TEXT PRIMARY KEY,
    final INTEGER NOT NULL DEFAULT 0,
    user_id INTEGER REFERENCES users (id),
    mark_time TEXT NOT NULL
);

-- One flow carries one job. The four versions count the changes of each group of
-- fields, the assignments included, so that a desk can see that somebody else was faster.
CREATE TABLE job_flows (
    id @identity@,
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

-- One row of the original-file desk: what the customer sent, as it stands now.
-- flow_create_time repeats the flow's, so that one index gives the desk's order.
CREATE TABLE job_compress (
    id @identity@,
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
