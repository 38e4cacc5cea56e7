-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT id, action, record_kind, record_id, record_name, refused
FROM events
WHERE id > :known AND id <= :newest
ORDER BY id
LIMIT :most
