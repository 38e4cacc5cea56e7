-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT base_name || CASE file_type WHEN '' THEN '' ELSE '.' || file_type END AS name
FROM orig_files
WHERE stored_name = :name
