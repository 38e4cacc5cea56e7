-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Enabled administrators besides this user.
SELECT count(*) AS admins
FROM users u
JOIN user_roles r ON r.user_id = u.id AND r.role = 'admin'
WHERE u.disabled = 0 AND u.id <> :user
