-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE job_flows SET robot_check_user_id = :user, robot_check_time = :time WHERE id = :flow
