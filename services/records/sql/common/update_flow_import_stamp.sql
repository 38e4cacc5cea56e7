-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE job_flows SET last_import_user_id = :user, last_import_time = :time WHERE id = :flow
