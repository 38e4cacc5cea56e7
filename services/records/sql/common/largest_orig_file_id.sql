-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT COALESCE(MAX(id), 0) AS largest FROM orig_files
