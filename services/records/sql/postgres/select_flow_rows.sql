-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- moment: two statements of one moment have read the same. A server that follows another one does
-- not know all the transactions that are at work, and cannot say.
SELECT v.*, v.Flow_Id AS row_id,
       (SELECT CASE WHEN pg_is_in_recovery() THEN ''
                    ELSE CAST(pg_current_snapshot() AS TEXT) END) AS moment
FROM flow_view v
WHERE v.Flow_Id IN (
    ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?,
    ?, ?, ?)
