-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The order of each desk, with what its filters ask for most: a search
-- walks it without reading the rows that do not match.
CREATE INDEX job_flows_order
    ON job_flows (create_time, id, job_name, flow_status, check_flag, batch_number);

CREATE INDEX job_compress_order
    ON job_compress (flow_create_time, id, flow_id, customer_id, serial_number, orig_name, tips);
