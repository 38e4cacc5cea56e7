-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE job_flows
SET flow_status = :status, check_flag = :flag, state_version = state_version + 1
WHERE id = :flow
