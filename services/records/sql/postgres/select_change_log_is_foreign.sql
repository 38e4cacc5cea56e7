-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- An entry of a transaction that this server has not begun yet came with a restored log: nobody
-- could follow it in the order of the transactions.
SELECT CASE WHEN EXISTS (SELECT 1 FROM change_log
                         WHERE xid >= pg_snapshot_xmax(pg_current_snapshot()))
            THEN 1 ELSE 0 END AS is_foreign
