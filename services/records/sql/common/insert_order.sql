-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO orders (flow_id, payment, suffix, pay_time, create_time)
VALUES (:flow, :payment, :suffix, :pay_time, :time)
