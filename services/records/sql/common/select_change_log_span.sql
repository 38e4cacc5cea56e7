-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Two walks to an end of the index; both in one would read every row.
SELECT coalesce((SELECT min(seq) FROM change_log), 0) AS oldest,
       coalesce((SELECT max(seq) FROM change_log), 0) AS newest
