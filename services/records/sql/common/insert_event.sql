-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO events (create_time, user_id, action, record_kind, record_id, record_name,
                    before_value, after_value, refused)
VALUES (:time, :user, :action, :kind, :record, :name, :before, :after, :refused)
