-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO file_delete_marks (stored_name, final, user_id, mark_time)
VALUES (:name, 0, :user, :time)
ON CONFLICT (stored_name) DO NOTHING
