-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT code, short_name FROM customers ORDER BY lower(code COLLATE "C")
