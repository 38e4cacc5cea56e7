-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- How far all writers have come. The server counts no versions of its own.
SELECT 0 AS version,
       coalesce((SELECT max(id) FROM events), 0) AS event,
       coalesce((SELECT max(seq) FROM change_log), 0) AS change
