-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT stored_name, final FROM file_delete_marks ORDER BY stored_name
