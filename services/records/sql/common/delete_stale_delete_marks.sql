-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Marks that no deletion followed, or whose name is recorded again.
DELETE FROM file_delete_marks
WHERE final = 0 OR stored_name IN (SELECT stored_name FROM orig_files)
