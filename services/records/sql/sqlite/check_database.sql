-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- A row for each thing that is wrong with the database itself.
SELECT integrity_check AS problem FROM pragma_integrity_check WHERE integrity_check <> 'ok'
UNION ALL
SELECT 'row ' || coalesce(rowid, 0) || ' of ' || "table" || ' names nothing in ' || parent
FROM pragma_foreign_key_check
