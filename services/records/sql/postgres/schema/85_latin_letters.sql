-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Names are one when they differ in the case of the letters A to Z alone, whatever other letters
-- the database's own locale knows in two cases.
DROP INDEX users_login_name;

CREATE UNIQUE INDEX users_login_name ON users (lower(login_name COLLATE "C"));

DROP INDEX customers_code;

CREATE UNIQUE INDEX customers_code ON customers (lower(code COLLATE "C"));
