-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- What was done to a flow and to its questions, the latest first, from one event backwards.
SELECT e.id, e.create_time, e.action, e.record_kind, e.record_id, e.record_name,
       e.before_value, e.after_value, e.refused, u.real_name
FROM events e
LEFT JOIN users u ON u.id = e.user_id
WHERE e.id < :before
  AND ((e.record_kind = 'flow' AND e.record_id = :flow)
       OR (e.record_kind = 'question'
           AND e.record_id IN (SELECT q.id FROM questions q WHERE q.flow_id = :same_flow)))
ORDER BY e.id DESC
LIMIT :most
