-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT id, flow_id, title, check_flag FROM questions WHERE id = :id
