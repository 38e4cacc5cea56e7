-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO import_contents (sha256, flow_id, user_id, import_time)
VALUES (:sha256, :flow, :user, :time)
