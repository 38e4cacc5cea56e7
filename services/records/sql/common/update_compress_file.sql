-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE job_compress
SET orig_file_id = :file, update_time = :time, update_user_id = :user
WHERE flow_id = :flow
