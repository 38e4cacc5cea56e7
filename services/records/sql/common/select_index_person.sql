-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT id, real_name FROM users WHERE id = :id
