-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO customers (code, short_name, superior_1, superior_2, create_time)
VALUES (:code, :short_name, :superior_1, :superior_2, :create_time)
