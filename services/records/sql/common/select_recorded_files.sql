-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT stored_name, has_body FROM orig_files
UNION ALL
SELECT stored_name, 1 AS has_body FROM question_pictures
ORDER BY stored_name
