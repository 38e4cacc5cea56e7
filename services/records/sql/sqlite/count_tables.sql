-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT count(*) AS tables FROM sqlite_master WHERE name NOT LIKE 'sqlite_%'
