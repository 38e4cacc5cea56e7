-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Who changed a group of the flow's fields last; the group begins the action's name.
SELECT e.action, e.after_value, e.create_time, u.real_name
FROM events e
LEFT JOIN users u ON u.id = e.user_id
WHERE e.record_kind = 'flow' AND e.record_id = :flow AND e.refused = 0
  AND substr(e.action, 1, length(:prefix)) = :prefix
ORDER BY e.id DESC
LIMIT 1
