-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
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

CREATE INDEX question_pictures_question ON question_pictures (question_id);
