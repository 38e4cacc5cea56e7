-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- How far all writers have come. The version differs once another connection has written
-- anything at all; the rest is for engines on which writers do not follow one another.
SELECT data_version AS version,
       coalesce((SELECT max(id) FROM events), 0) AS event,
       coalesce((SELECT max(seq) FROM change_log), 0) AS change,
       '' AS moment,
       '0' AS writer,
       0 AS by_others
FROM pragma_data_version
