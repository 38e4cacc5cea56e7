-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT id, login_name, real_name, department, post, password_hash, disabled
FROM users ORDER BY login_name
