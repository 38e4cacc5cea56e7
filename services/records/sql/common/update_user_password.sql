-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE users SET password_hash = :hash WHERE id = :user
