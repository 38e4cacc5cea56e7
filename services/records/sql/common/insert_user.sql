-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO users (login_name, real_name, department, post, password_hash, create_time)
VALUES (:login, :real, :department, :post, :hash, :time)
RETURNING id
