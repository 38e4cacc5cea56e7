-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE job_flows SET orig_file_id = :file, file_version = file_version + 1 WHERE id = :flow
