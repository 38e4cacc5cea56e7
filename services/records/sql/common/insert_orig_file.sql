-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO orig_files (guid, base_name, stored_name, file_type, customer_code, kind, state,
                        create_user_id, create_time)
VALUES (:guid, :base, :name, :type, :customer, :kind, :state, :user, :time)
RETURNING id
