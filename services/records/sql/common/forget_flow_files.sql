-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The flow lets go of a file that is about to be deleted.
UPDATE job_flows
SET orig_file_id = CASE WHEN orig_file_id = :orig_file THEN NULL ELSE orig_file_id END,
    last_import_file_id = CASE WHEN last_import_file_id = :import_file THEN NULL ELSE last_import_file_id END,
    result_file_id = CASE WHEN result_file_id = :result_file THEN NULL ELSE result_file_id END,
    file_version = file_version + 1
WHERE id = :flow
