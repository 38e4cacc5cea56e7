-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO orig_file_assign (flow_id, executor_id, assign_user_id, assign_time)
VALUES (:flow, :assignee, :user, :time)
ON CONFLICT (flow_id) DO UPDATE
SET executor_id = excluded.executor_id, assign_user_id = excluded.assign_user_id,
    assign_time = excluded.assign_time
