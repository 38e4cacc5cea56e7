-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
DELETE FROM user_roles WHERE user_id = :user AND role = :role
