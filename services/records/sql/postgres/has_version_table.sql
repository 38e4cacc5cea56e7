-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The program's own databases have both tables; another program's may have one of them.
SELECT CASE WHEN count(*) = 2 THEN 1 ELSE 0 END AS tables
FROM pg_class c
JOIN pg_namespace n ON n.oid = c.relnamespace
WHERE n.nspname = current_schema() AND c.relkind = 'r'
  AND c.relname IN ('schema_version', 'job_flows')
