-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
CREATE TABLE orders (
    id @identity@,
    flow_id INTEGER NOT NULL UNIQUE REFERENCES job_flows (id),
    payment INTEGER NOT NULL DEFAULT 0,
    suffix TEXT NOT NULL DEFAULT '',
    pay_time TEXT,
    create_time TEXT NOT NULL
);

-- check_flag: 0 not reviewed, 1 failed, 2 passed, 3 finished.
CREATE TABLE questions (
    id @identity@,
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

-- A picture of a question. file_name is what it was called where it came from; nothing
-- is ever looked up or written under that name.
CREATE TABLE question_pictures (
    id @identity@,
    question_id INTEGER NOT NULL REFERENCES questions (id),
    stored_name TEXT NOT NULL UNIQUE,
    file_name TEXT NOT NULL DEFAULT '',
    create_user_id INTEGER REFERENCES users (id),
    create_time TEXT NOT NULL
);

-- What was imported, by its content: whoever brings the same bytes again is asked,
-- for whichever job they came before.
CREATE TABLE import_contents (
    id @identity@,
    sha256 TEXT NOT NULL,
    flow_id INTEGER NOT NULL REFERENCES job_flows (id),
    user_id INTEGER REFERENCES users (id),
    import_time TEXT NOT NULL
);

-- Who prepares the original file of a flow.
CREATE TABLE orig_file_assign (
    flow_id INTEGER PRIMARY KEY REFERENCES job_flows (id),
    executor_id INTEGER NOT NULL REFERENCES users (id),
    assign_user_id INTEGER REFERENCES users (id),
    assign_time TEXT NOT NULL
);

-- Who reviews a flow.
CREATE TABLE pre_check_assign (
    flow_id INTEGER PRIMARY KEY REFERENCES job_flows (id),
    executor_id INTEGER NOT NULL REFERENCES users (id),
    assign_user_id INTEGER REFERENCES users (id),
    assign_time TEXT NOT NULL
);
