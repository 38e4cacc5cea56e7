-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The largest key that the table has ever given out.
SELECT coalesce((SELECT seq FROM sqlite_sequence WHERE name = :table), 0) AS counter
