-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT o.id, f.guid AS flow_guid, o.payment, o.suffix
FROM orders o
JOIN job_flows f ON f.id = o.flow_id
WHERE f.id = :flow
