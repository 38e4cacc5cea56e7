-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Of the names that are no user's only the newest stay; a user's own count is never pushed
-- out by trying others.
DELETE FROM sign_in_failures
WHERE NOT EXISTS (SELECT 1 FROM users u
                  WHERE lower(u.login_name COLLATE "C") = sign_in_failures.login_name)
  AND last_time <= (SELECT f.last_time FROM sign_in_failures f
                    WHERE NOT EXISTS (SELECT 1 FROM users u
                                      WHERE lower(u.login_name COLLATE "C") = f.login_name)
                    ORDER BY f.last_time DESC LIMIT 1 OFFSET :most)
