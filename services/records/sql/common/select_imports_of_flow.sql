-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- What was ever imported for the flow, the last import first.
SELECT e.after_value AS stored_name, e.create_time, u.real_name
FROM events e
LEFT JOIN users u ON u.id = e.user_id
WHERE e.record_kind = 'flow' AND e.record_id = :flow AND e.refused = 0
  AND e.action IN ('file.importJob', 'file.importResult')
ORDER BY e.id DESC
