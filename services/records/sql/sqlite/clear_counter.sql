-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
DELETE FROM sqlite_sequence WHERE name = :table
