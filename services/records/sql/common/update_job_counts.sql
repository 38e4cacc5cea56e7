-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
UPDATE jobs SET layer_count = :layers, feature_count = :features WHERE name = :job
