-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT id, guid, base_name, stored_name, file_type, customer_code, kind FROM orig_files WHERE stored_name = :name
