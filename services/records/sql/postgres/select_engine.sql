-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The engine that keeps the records, for the about box.
SELECT 'PostgreSQL' AS name, current_setting('server_version') AS version,
       'PostgreSQL License' AS licence
