-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- No version of the schema, but a step that the database has begun to go through.
INSERT INTO schema_version (version, applied_time) VALUES (-1, :time)
