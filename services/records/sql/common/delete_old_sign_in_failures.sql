-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
DELETE FROM sign_in_failures WHERE last_time < :time
