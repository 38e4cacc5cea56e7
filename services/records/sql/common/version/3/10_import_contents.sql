-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- What was imported, by its content: whoever brings the same bytes again is asked,
-- for whichever job they came before.
CREATE TABLE import_contents (
    id @identity@,
    sha256 TEXT NOT NULL,
    flow_id INTEGER NOT NULL REFERENCES job_flows (id),
    user_id INTEGER REFERENCES users (id),
    import_time TEXT NOT NULL
);

CREATE INDEX import_contents_sha256 ON import_contents (sha256, flow_id);
