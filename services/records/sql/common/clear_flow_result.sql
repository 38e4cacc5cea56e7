-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The robot begins anew: what it delivered before is not the result of this run.
UPDATE job_flows SET result_file_id = NULL, result_time = NULL WHERE id = :flow
