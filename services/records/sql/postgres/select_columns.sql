-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT CAST(column_name AS TEXT) AS name
FROM information_schema.columns
WHERE table_schema = current_schema() AND table_name = :table
ORDER BY 1
