-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- First how the log stands: its oldest entry (of an empty one, less than 0: the last number that
-- was given out), and the moment of this look. Then the entry :seq, the
-- last one known, unless it is gone, and with it perhaps others behind it; then what came since.
-- mark: two entries with one number and different marks are of two histories of the database.
SELECT 1 AS is_state,
       coalesce((SELECT min(seq) FROM change_log),
                -coalesce((SELECT seq FROM sqlite_sequence WHERE name = 'change_log'), 0)) AS seq,
       0 AS kind,
       0 AS row_id,
       '' AS mark,
       '' AS moment,
       0 AS at_work
UNION ALL
SELECT 0, seq, kind, row_id, kind || ' ' || row_id || ' ' || op, '', 0
FROM change_log WHERE seq >= :seq
LIMIT :most
