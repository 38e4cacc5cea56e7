-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- :ids: with commas between them.
SELECT c.id AS row_id,
       c.flow_create_time AS row_time,
       c.serial_number AS serial_number,
       c.customer_id AS customer_id,
       oa.executor_id AS executor_id,
       c.orig_name AS orig_name,
       c.description AS description,
       c.tips AS tips
FROM job_compress c
LEFT JOIN orig_file_assign oa ON oa.flow_id = c.flow_id
WHERE c.id IN (SELECT value FROM json_each('[' || :ids || ']'))
