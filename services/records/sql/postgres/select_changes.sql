-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- First how the log stands: its oldest entry (of an empty one, less than 0: the last number that
-- was given out), the moment of this look, and how many transactions
-- were at work, on whichever database of the server. Then the entry :seq, the newest one seen at
-- :moment, unless it is gone, and with it perhaps others; then what is to be seen since :moment:
-- entries with larger numbers, those of transactions that were at work, and those of transactions
-- that began later with a smaller number.
-- mark: two entries with one number and different marks are of two histories of the database, of
-- which one went back in time. What a dump has brought along may name transactions of the future.
SELECT 1 AS is_state,
       coalesce((SELECT min(seq) FROM change_log),
                -coalesce(pg_sequence_last_value(CAST(pg_get_serial_sequence('change_log', 'seq')
                                                AS regclass)), 0)) AS seq,
       0 AS kind,
       0 AS row_id,
       '' AS mark,
       CAST(pg_current_snapshot() AS TEXT) AS moment,
       (SELECT count(*) FROM pg_snapshot_xip(pg_current_snapshot())) AS at_work
UNION ALL
(SELECT 0, seq, kind, row_id, CAST(xid AS TEXT), '', 0
 FROM change_log
 WHERE seq >= :seq
 ORDER BY seq
 LIMIT :most)
UNION ALL
(SELECT 0, seq, kind, row_id, CAST(xid AS TEXT), '', 0
 FROM change_log
 WHERE xid = ANY (ARRAY(SELECT pg_snapshot_xip(CAST(:moment AS pg_snapshot)))) AND seq < :seq
 LIMIT :most)
UNION ALL
(SELECT 0, seq, kind, row_id, CAST(xid AS TEXT), '', 0
 FROM change_log
 WHERE xid >= pg_snapshot_xmax(CAST(:moment AS pg_snapshot))
   AND xid < pg_snapshot_xmax(pg_current_snapshot())
   AND seq < :seq
 LIMIT :most)
