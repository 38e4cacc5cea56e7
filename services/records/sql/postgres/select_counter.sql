-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The largest key that the table has ever given out.
SELECT coalesce(pg_sequence_last_value(CAST(pg_get_serial_sequence(:table, 'id') AS regclass)), 0)
       AS counter
