-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- Which history the log tells: of which server, since which change of leader, of which database and
-- table. A server that follows another one has no history of its own yet.
SELECT (SELECT CAST(system_identifier AS TEXT) FROM pg_control_system()) || ' ' ||
       CASE WHEN pg_is_in_recovery() THEN '-'
            ELSE substr(pg_walfile_name(pg_current_wal_lsn()), 1, 8) END || ' ' ||
       CAST((SELECT oid FROM pg_database WHERE datname = current_database()) AS TEXT) || ' ' ||
       CAST(CAST(CAST('change_log' AS regclass) AS oid) AS TEXT) AS home
