-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Without what was written beside a transaction that is still at work: entries of that one may
-- come before it. The newest one is the last in the order of select_changes.
SELECT coalesce((SELECT min(seq) FROM change_log), 0) AS oldest,
       coalesce((SELECT seq FROM change_log
                 WHERE xid < pg_snapshot_xmin(pg_current_snapshot())
                 ORDER BY xid DESC, seq DESC LIMIT 1), 0) AS newest
