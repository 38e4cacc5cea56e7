-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The robot's account does no work of people.
SELECT id, real_name, CASE WHEN password_hash = '' THEN 0 ELSE 1 END AS is_account FROM users
WHERE disabled = 0 AND id NOT IN (SELECT user_id FROM user_roles WHERE role = 'robot')
ORDER BY id
