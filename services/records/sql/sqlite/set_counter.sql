-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO sqlite_sequence (name, seq) VALUES (:table, :counter)
