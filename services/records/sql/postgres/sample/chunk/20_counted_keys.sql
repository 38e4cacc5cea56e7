-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The generated rows brought their keys along; the next one that is counted comes after them.
SELECT setval(pg_get_serial_sequence('job_flows', 'id'), max(id)) FROM job_flows HAVING max(id) > 0;

SELECT setval(pg_get_serial_sequence('orig_files', 'id'), max(id)) FROM orig_files HAVING max(id) > 0;
