-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- The server chooses its ways by what it knows of the tables.
ANALYZE;
