-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE questions
SET answer = :answer, update_user_id = :user, update_time = :time
WHERE id = :id
