-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- A file stays what it is as long as its connection lives.
SELECT '' AS home
