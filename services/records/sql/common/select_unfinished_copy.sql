-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT count(*) AS marks FROM schema_version WHERE version < 0
