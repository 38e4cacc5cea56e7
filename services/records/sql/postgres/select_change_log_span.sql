-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- How the log stands, as select_changes says it.
SELECT coalesce((SELECT min(seq) FROM change_log),
                -coalesce(pg_sequence_last_value(CAST(pg_get_serial_sequence('change_log', 'seq')
                                                AS regclass)), 0)) AS oldest,
       coalesce(last.seq, 0) AS newest,
       coalesce(CAST(last.xid AS TEXT), '') AS mark,
       CAST(pg_current_snapshot() AS TEXT) AS moment,
       (SELECT count(*) FROM pg_snapshot_xip(pg_current_snapshot())) AS at_work
FROM (SELECT 1) AS one
LEFT JOIN (SELECT seq, xid FROM change_log ORDER BY seq DESC LIMIT 1) AS last ON TRUE
