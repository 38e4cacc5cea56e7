-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE orders SET payment = 1, pay_time = :time WHERE id = :order
