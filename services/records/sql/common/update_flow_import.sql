-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- An import names the prepared job and is the flow's file from now on.
UPDATE job_flows
SET orig_job_name = :name, last_import_file_id = :file, last_import_user_id = :user,
    last_import_time = :time, file_version = file_version + 1
WHERE id = :flow
