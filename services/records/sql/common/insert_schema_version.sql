-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO schema_version (version, applied_time) VALUES (:version, :applied_time)
