-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The program's own databases have both tables; another program's may have one of them.
SELECT CASE WHEN count(*) = 2 THEN 1 ELSE 0 END AS tables FROM sqlite_master
WHERE type = 'table' AND name IN ('schema_version', 'job_flows')
