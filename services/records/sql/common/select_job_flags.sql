-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
SELECT pre_check_flag, check_flag FROM jobs WHERE name = :name
