-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The flows that use a stored file now: none for one that was replaced since, several for
-- one that they share.
SELECT id AS flow_id FROM job_flows WHERE orig_file_id = :orig_file
UNION SELECT id FROM job_flows WHERE last_import_file_id = :import_file
UNION SELECT id FROM job_flows WHERE result_file_id = :result_file
UNION SELECT flow_id FROM job_compress WHERE orig_file_id = :compress_file
ORDER BY flow_id
