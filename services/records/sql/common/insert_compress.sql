-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
INSERT INTO job_compress (flow_id, customer_id, serial_number, orig_name, description, tips,
                          orig_file_id, flow_create_time, create_time, update_time,
                          update_user_id)
VALUES (:flow, :customer, :serial, :name, :description, :tips, :file, :flow_time, :create_time,
        :update_time, :user)
