-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE users SET last_sign_in_time = :time WHERE id = :user
