-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- How far a flow has come, as one number. Nearly all flows are finished, so that this
-- leads to the open ones.
CREATE INDEX job_flows_state ON job_flows ((flow_status * 4 + check_flag));
