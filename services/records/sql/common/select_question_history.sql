-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT e.id, e.action, e.after_value, e.create_time, u.real_name
FROM events e
LEFT JOIN users u ON u.id = e.user_id
WHERE e.record_kind = 'question' AND e.record_id = :question AND e.refused = 0
ORDER BY e.id
