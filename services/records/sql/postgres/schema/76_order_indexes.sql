-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The order of each desk. Without the texts that filters ask for: an entry of an index has to fit
-- on a third of a page here, and a customer's remarks do not.
CREATE INDEX job_flows_order ON job_flows (create_time, id);

CREATE INDEX job_compress_order ON job_compress (flow_create_time, id);
