-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO job_flows (guid, job_name, flow_status, check_flag, orig_file_id,
                       last_import_file_id, last_import_user_id, last_import_time,
                       create_user_id, create_time)
VALUES (:guid, :job, :status, :flag, :file, :import_file, :import_user, :import_time, :user, :time)
RETURNING id
