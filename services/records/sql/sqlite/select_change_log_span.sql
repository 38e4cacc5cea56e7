-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- How the log stands, as select_changes says it. Walks to an end of the index; both in one would
-- read every row.
SELECT coalesce((SELECT min(seq) FROM change_log),
                -coalesce((SELECT seq FROM sqlite_sequence WHERE name = 'change_log'), 0)) AS oldest,
       coalesce((SELECT max(seq) FROM change_log), 0) AS newest,
       coalesce((SELECT kind || ' ' || row_id || ' ' || op
                 FROM change_log ORDER BY seq DESC LIMIT 1), '') AS mark,
       '' AS moment,
       0 AS at_work
