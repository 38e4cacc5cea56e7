-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO customers (code, short_name, create_time)
VALUES (:code, :name, :time)
RETURNING id
