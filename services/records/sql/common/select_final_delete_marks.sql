-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- A name that is recorded again is no leftover.
SELECT stored_name FROM file_delete_marks m
WHERE final = 1
  AND NOT EXISTS (SELECT 1 FROM orig_files o WHERE o.stored_name = m.stored_name)
ORDER BY stored_name
