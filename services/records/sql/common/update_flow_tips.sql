-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE job_flows SET tips = :tips, remark_version = remark_version + 1 WHERE id = :flow
