-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT failures, last_time FROM sign_in_failures WHERE login_name = :login
