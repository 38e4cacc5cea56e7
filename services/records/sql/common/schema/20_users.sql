-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- People and the robot's own account. Never deleted: records name them.
CREATE TABLE users (
    id @identity@,
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
