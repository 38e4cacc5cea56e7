-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Wrong passwords in a row, by the name that was typed, known or not: a lock that only known
-- names have would tell which names are known.
CREATE TABLE sign_in_failures (
    login_name TEXT PRIMARY KEY,
    failures INTEGER NOT NULL,
    last_time TEXT NOT NULL
);
