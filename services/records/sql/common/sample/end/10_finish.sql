-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE customers SET last_serial = COALESCE(
    (SELECT MAX(serial_number) FROM jobs WHERE jobs.customer_id = customers.id), last_serial);

DROP TABLE sample_questions;

DROP TABLE sample_flows;
