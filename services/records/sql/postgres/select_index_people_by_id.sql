-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- :ids: with commas between them.
SELECT id, real_name FROM users
WHERE id = ANY (CAST(string_to_array(:ids, ',') AS INTEGER[]))
