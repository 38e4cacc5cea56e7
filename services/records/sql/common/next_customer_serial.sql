-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE customers SET last_serial = last_serial + 1 WHERE id = :id RETURNING last_serial
