-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The engine that keeps the records, for the about box.
SELECT 'SQLite' AS name, sqlite_version() AS version, 'public domain' AS licence
