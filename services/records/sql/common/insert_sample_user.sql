-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO users (login_name, real_name, department, post, create_time)
VALUES (:login_name, :real_name, :department, :post, :create_time)
