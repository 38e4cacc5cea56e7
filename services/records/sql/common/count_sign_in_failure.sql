-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO sign_in_failures (login_name, failures, last_time) VALUES (:login, 1, :time)
ON CONFLICT (login_name) DO UPDATE
SET failures = sign_in_failures.failures + 1, last_time = excluded.last_time
