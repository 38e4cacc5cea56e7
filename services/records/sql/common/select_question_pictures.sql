-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT stored_name, file_name FROM question_pictures WHERE question_id = :question ORDER BY id
