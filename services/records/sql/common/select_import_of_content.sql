-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The last import of these bytes: for this flow if there was one, or else for another.
SELECT c.flow_id, f.job_name, c.import_time, u.real_name
FROM import_contents c
JOIN job_flows f ON f.id = c.flow_id
LEFT JOIN users u ON u.id = c.user_id
WHERE c.sha256 = :sha256
ORDER BY CASE WHEN c.flow_id = :flow THEN 0 ELSE 1 END, c.id DESC
LIMIT 1
