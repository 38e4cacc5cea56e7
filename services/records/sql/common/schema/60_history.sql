-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Audit: written in the same transaction as the change. refused 1: nothing was changed.
CREATE TABLE events (
    id @identity@,
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

-- What a copy of the searched fields, kept elsewhere, has to read again. Filled by triggers.
-- kind: 0 everything, 1 row of the flow view, 2 row of the original-file view,
-- 3 customer, 4 user. op: 1 new, 2 changed, 3 gone.
CREATE TABLE change_log (
    seq @identity@,
    kind INTEGER NOT NULL,
    row_id INTEGER NOT NULL,
    op INTEGER NOT NULL
);
