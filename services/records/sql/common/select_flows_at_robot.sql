-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Flows that this account took for the robot (status 2, flag 0) and has not delivered.
SELECT f.id, f.guid, f.job_name, f.state_version
FROM job_flows f
WHERE f.flow_status * 4 + f.check_flag = 8 AND f.result_file_id IS NULL
  AND (SELECT e.user_id
       FROM events e
       WHERE e.record_kind = 'flow' AND e.record_id = f.id AND e.refused = 0
         AND substr(e.action, 1, 6) = 'state.' AND e.after_value = '2,0'
       ORDER BY e.id DESC
       LIMIT 1) = :user
ORDER BY f.id
