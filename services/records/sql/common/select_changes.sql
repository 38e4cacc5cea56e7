-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- From the last entry known on: when it is gone, so may be others behind it.
-- is_settled: no entry can come before this one any more, so that it may be the last one known.
SELECT seq, kind, row_id, 1 AS is_settled
FROM change_log WHERE seq >= :seq ORDER BY seq LIMIT :most
