-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT c.id, c.flow_id, c.orig_name, c.orig_file_id, o.stored_name,
       COALESCE(o.has_body, 0) AS has_body
FROM job_compress c
LEFT JOIN orig_files o ON o.id = c.orig_file_id
WHERE c.id = :id
