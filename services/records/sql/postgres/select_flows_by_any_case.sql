-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Flows whose job name may be the given one but for upper and lower case. Names with other than
-- Latin letters are all candidates: the caller compares.
SELECT id, job_name
FROM job_flows
WHERE lower(job_name COLLATE "C") = lower(:name COLLATE "C")
   OR octet_length(job_name) > char_length(job_name)
