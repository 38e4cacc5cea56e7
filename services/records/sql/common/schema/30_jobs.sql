-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Serial numbers count per customer: last_serial is the one given out last.
CREATE TABLE customers (
    id @identity@,
    code TEXT NOT NULL,
    short_name TEXT NOT NULL DEFAULT '',
    superior_1 TEXT NOT NULL DEFAULT '',
    superior_2 TEXT NOT NULL DEFAULT '',
    last_serial INTEGER NOT NULL DEFAULT 0,
    create_time TEXT NOT NULL
);

CREATE UNIQUE INDEX customers_code ON customers (lower(code));

-- A job's name is its customer's code and its serial number in six digits.
CREATE TABLE jobs (
    id @identity@,
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

-- Parameters that the web robot gets with a job.
CREATE TABLE robot_params (
    job_name TEXT PRIMARY KEY REFERENCES jobs (name) ON UPDATE CASCADE,
    params TEXT NOT NULL DEFAULT '',
    update_time TEXT NOT NULL
);
