-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT stored_name
FROM (SELECT stored_name FROM orig_files
      UNION ALL
      SELECT stored_name FROM question_pictures) AS recorded
WHERE stored_name = :name
