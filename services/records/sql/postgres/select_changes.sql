-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- From the last entry known on: when it is gone, so may be others behind it. Transactions are
-- read in the order of their numbers, and never past the first one that is still at work: what
-- it leaves comes behind everything that was read before.
SELECT seq, kind, row_id
FROM change_log
WHERE (xid, seq) >= (coalesce((SELECT known.xid FROM change_log known WHERE known.seq = :seq),
                              CAST('0' AS xid8)), :seq)
  AND xid < pg_snapshot_xmin(pg_current_snapshot())
ORDER BY xid, seq
LIMIT :most
