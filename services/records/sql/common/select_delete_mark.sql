-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT final FROM file_delete_marks WHERE stored_name = :name
