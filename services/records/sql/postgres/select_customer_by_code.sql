-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT id, code FROM customers WHERE lower(code COLLATE "C") = lower(:code COLLATE "C")
