-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT id, login_name, real_name, department, post, password_hash, disabled
FROM users WHERE lower(login_name COLLATE "C") = lower(:login COLLATE "C")
