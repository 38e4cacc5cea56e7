-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE users SET disabled = :disabled WHERE id = :user
