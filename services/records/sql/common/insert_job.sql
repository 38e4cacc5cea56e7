-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO jobs (name, customer_id, serial_number, create_user_id, create_time)
VALUES (:name, :customer, :serial, :user, :time)
