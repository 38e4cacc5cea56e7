-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- One row for each step that this database went through; the largest version counts.
CREATE TABLE schema_version (
    version INTEGER PRIMARY KEY,
    applied_time TEXT NOT NULL
);
