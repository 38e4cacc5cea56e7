-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE job_flows SET assignment_version = assignment_version + 1 WHERE id = :flow
