-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- How far all writers have come, and whether others than :writer and this transaction have
-- logged a change since the mark that is made of :change and :moment (at first, an empty text).
-- A transaction that began early and ended late has small numbers: it is found by what was at
-- work then. The server counts no versions of its own.
SELECT 0 AS version,
       coalesce((SELECT max(id) FROM events), 0) AS event,
       coalesce((SELECT max(seq) FROM change_log), 0) AS change,
       CAST(now.moment AS TEXT) AS moment,
       CAST(now.writer AS TEXT) AS writer,
       CASE WHEN
              EXISTS (SELECT 1 FROM change_log
                      WHERE seq > :change AND xid NOT IN (now.writer, now.known_writer))
           OR EXISTS (SELECT 1 FROM change_log
                      WHERE seq <= :change
                        AND xid NOT IN (now.writer, now.known_writer)
                        AND xid = ANY (ARRAY(SELECT pg_snapshot_xip(now.known_moment))))
           OR EXISTS (SELECT 1 FROM change_log
                      WHERE seq <= :change
                        AND xid NOT IN (now.writer, now.known_writer)
                        AND xid >= pg_snapshot_xmax(now.known_moment))
       THEN 1 ELSE 0 END AS by_others
FROM (SELECT pg_current_snapshot() AS moment,
             coalesce(pg_current_xact_id_if_assigned(), CAST('0' AS xid8)) AS writer,
             CAST(CAST(:writer AS TEXT) AS xid8) AS known_writer,
             coalesce(CAST(nullif(CAST(:moment AS TEXT), '') AS pg_snapshot),
                      pg_current_snapshot()) AS known_moment) AS now
