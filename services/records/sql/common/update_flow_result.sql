-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Without a name of the prepared job a review would not know what it judges.
UPDATE job_flows
SET result_file_id = :file, result_time = :time,
    orig_job_name = CASE WHEN orig_job_name = '' THEN :name ELSE orig_job_name END,
    state_version = state_version + 1
WHERE id = :flow
