-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- :ids: with commas between them.
SELECT id, short_name, code, superior_1, superior_2 FROM customers
WHERE id = ANY (CAST(string_to_array(:ids, ',') AS INTEGER[]))
