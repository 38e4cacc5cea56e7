-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The stored file that a stored name or a GUID means, and the flow that uses it now;
-- no flow for one that was replaced since.
SELECT o.id, o.stored_name,
       coalesce((SELECT f.id FROM job_flows f WHERE f.orig_file_id = o.id),
                (SELECT f.id FROM job_flows f WHERE f.last_import_file_id = o.id),
                (SELECT f.id FROM job_flows f WHERE f.result_file_id = o.id)) AS flow_id
FROM orig_files o
WHERE o.stored_name = :name OR o.guid = :name
