-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO question_pictures (question_id, stored_name, file_name, create_user_id, create_time)
VALUES (:question, :name, :file, :user, :time)
