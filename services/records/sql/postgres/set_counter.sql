-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT setval(pg_get_serial_sequence(:table, 'id'), :counter)
