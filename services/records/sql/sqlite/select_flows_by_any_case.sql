-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Flows whose job name may be the given one but for upper and lower case. The engine folds Latin
-- letters only, so every name with other letters is a candidate: the caller compares.
SELECT id, job_name
FROM job_flows
WHERE lower(job_name) = lower(:name) OR length(CAST(job_name AS BLOB)) > length(job_name)
