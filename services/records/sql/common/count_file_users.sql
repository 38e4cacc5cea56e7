-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Records that still name a stored file.
SELECT (SELECT count(*) FROM job_compress WHERE orig_file_id = :compress_file)
     + (SELECT count(*) FROM job_flows
        WHERE orig_file_id = :orig_file OR last_import_file_id = :import_file
           OR result_file_id = :result_file) AS users
