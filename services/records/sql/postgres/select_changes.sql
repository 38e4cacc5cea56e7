-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- From the last entry known on: when it is gone, so may be others behind it. Transactions are
-- read in the order of their numbers. While one is at work, what later ones have left can be read,
-- and is read again the next time: what that one leaves comes before it.
SELECT seq, kind, row_id,
       CASE WHEN xid < pg_snapshot_xmin(pg_current_snapshot()) THEN 1 ELSE 0 END AS is_settled
FROM change_log
WHERE (xid, seq) >= (coalesce((SELECT known.xid FROM change_log known WHERE known.seq = :seq),
                              CAST('0' AS xid8)), :seq)
ORDER BY xid, seq
LIMIT :most
