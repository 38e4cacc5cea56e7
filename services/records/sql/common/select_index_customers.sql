-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT id, short_name, code, superior_1, superior_2 FROM customers ORDER BY id
