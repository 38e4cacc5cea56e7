-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Of a database from before questions had pictures.
SELECT stored_name, has_body FROM orig_files ORDER BY stored_name
