-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- One row for each generated flow; the tables are filled from it.
CREATE TEMPORARY TABLE sample_flows (
    id INTEGER PRIMARY KEY,
    customer_id INTEGER,
    customer_code TEXT,
    serial_number INTEGER,
    job_name TEXT,
    guid TEXT,
    orig_name TEXT,
    description TEXT,
    source_tips TEXT,
    remark TEXT,
    orig_job_name TEXT,
    layer_count INTEGER,
    feature_count INTEGER,
    flow_status INTEGER,
    check_flag INTEGER,
    batch_number INTEGER,
    file_type TEXT,
    payment INTEGER,
    creator INTEGER,
    executor INTEGER,
    checker INTEGER,
    importer INTEGER,
    reviewer INTEGER,
    robot_reviewer INTEGER,
    orig_file_id INTEGER,
    import_file_id INTEGER,
    result_file_id INTEGER,
    create_time TEXT,
    assign_time TEXT,
    import_time TEXT,
    check_time TEXT,
    robot_check_time TEXT
);

CREATE TEMPORARY TABLE sample_questions (
    flow_id INTEGER,
    title TEXT,
    description TEXT,
    check_flag INTEGER,
    creator INTEGER,
    create_time TEXT
);
