-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT name FROM pragma_table_info(:table) ORDER BY name
