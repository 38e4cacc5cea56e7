-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO change_log (kind, row_id, op) VALUES (:kind, :row_id, :op)
