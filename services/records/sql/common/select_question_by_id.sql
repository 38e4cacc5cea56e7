-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT q.id, q.flow_id, q.title, q.description, q.answer, q.check_flag, q.create_time,
       u.real_name AS raiser_name
FROM questions q
LEFT JOIN users u ON u.id = q.create_user_id
WHERE q.id = :id
