-- SPDX-FileCopyrightText: the KODMS desks authors
-- SPDX-License-Identifier: Apache-2.0
-- A row for each thing that is wrong with the database itself: what the server itself holds to be
-- broken, rules that are not being kept, rows that name nothing.
SELECT 'index ' || i.indexrelid::regclass || ' is not valid' AS problem
FROM pg_index i
JOIN pg_class c ON c.oid = i.indexrelid
WHERE c.relnamespace = current_schema()::regnamespace AND NOT (i.indisvalid AND i.indisready)
UNION ALL
SELECT 'rule ' || k.conname || ' of ' || k.conrelid::regclass || ' was never checked'
FROM pg_constraint k
WHERE k.connamespace = current_schema()::regnamespace AND NOT k.convalidated
UNION ALL
SELECT 'trigger ' || t.tgname || ' of ' || t.tgrelid::regclass || ' is switched off'
FROM pg_trigger t
JOIN pg_class c ON c.oid = t.tgrelid
WHERE c.relnamespace = current_schema()::regnamespace AND t.tgenabled NOT IN ('O', 'A')
UNION ALL
SELECT 'the disk has damaged ' || s.checksum_failures || ' pages'
FROM pg_stat_database s
WHERE s.datname = current_database() AND s.checksum_failures > 0
UNION ALL
SELECT 'rows of ' || f.child || ' name nothing in ' || f.parent
FROM (SELECT k.conrelid::regclass AS child, k.confrelid::regclass AS parent,
             query_to_xml(format('SELECT 1 AS lost FROM %s c WHERE c.%I IS NOT NULL AND NOT EXISTS '
                                 || '(SELECT 1 FROM %s p WHERE p.%I = c.%I) LIMIT 1',
                                 k.conrelid::regclass, a.attname, k.confrelid::regclass,
                                 b.attname, a.attname), false, true, '') AS lost
      FROM pg_constraint k
      JOIN pg_attribute a ON a.attrelid = k.conrelid AND a.attnum = k.conkey[1]
      JOIN pg_attribute b ON b.attrelid = k.confrelid AND b.attnum = k.confkey[1]
      WHERE k.contype = 'f' AND k.connamespace = current_schema()::regnamespace) f
WHERE CAST(f.lost AS TEXT) <> ''
