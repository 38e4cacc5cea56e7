-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE jobs SET pre_check_flag = :pre_flag, check_flag = :flag WHERE name = :name
