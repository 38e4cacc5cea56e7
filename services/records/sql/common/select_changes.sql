-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- From the last entry known on: when it is gone, so may be others behind it.
SELECT seq, kind, row_id FROM change_log WHERE seq >= :seq ORDER BY seq LIMIT :most
