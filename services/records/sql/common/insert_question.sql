-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO questions (flow_id, title, description, create_user_id, create_time)
VALUES (:flow, :title, :description, :user, :time)
RETURNING id
