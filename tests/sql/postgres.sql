-- Run by psql on a server of its own. An expectation that does not hold prints a line.
-- Variables: `cases`, the commands that read the cases of all engines.
\set QUIET on
\set ON_ERROR_STOP on
\pset tuples_only on
\pset format unaligned
SET client_min_messages = warning;

CREATE FUNCTION expect(what text, got text, expected text) RETURNS SETOF text LANGUAGE sql AS
  $$ SELECT 'FAILED: ' || what || E'\n  expected: ' || coalesce(expected, 'NULL') || E'\n  got:      '
            || coalesce(got, 'NULL')
     WHERE got IS DISTINCT FROM expected $$;

-- The value of an expression as text, or "!" and its error.
CREATE FUNCTION value_of(expression text) RETURNS text LANGUAGE plpgsql AS $$
DECLARE value text;
BEGIN
  EXECUTE 'SELECT coalesce(CAST((' || expression || ') AS text), ''NULL'')' INTO value;
  RETURN value;
EXCEPTION WHEN OTHERS THEN
  RETURN '!' || sqlerrm;
END $$;

CREATE FUNCTION plan(query text) RETURNS text LANGUAGE plpgsql AS $$
DECLARE line text; lines text := '';
BEGIN
  FOR line IN EXECUTE 'EXPLAIN (COSTS OFF) ' || query LOOP lines := lines || line || E'\n'; END LOOP;
  RETURN lines;
END $$;

-- The most memory that this process has had, in bytes.
CREATE FUNCTION peak() RETURNS bigint LANGUAGE sql AS
  $$ SELECT 1024 * substring(pg_read_file('/proc/self/status') FROM 'VmHWM:\s*(\d+) kB')::bigint $$;

-- An earlier version becomes this one, with what depends on it.

CREATE EXTENSION qel VERSION '0.0';
CREATE TABLE earlier(body text);
CREATE VIEW visible AS SELECT qel_plain(body) AS text FROM earlier;
INSERT INTO earlier VALUES ('a/b1b');
ALTER EXTENSION qel UPDATE;
SELECT expect('volatile, strict, parallel, cost: ' || proname,
              concat_ws(' ', provolatile, proisstrict, proparallel, procost >= 100), 'i t s t')
  FROM pg_depend JOIN pg_extension e ON refobjid = e.oid JOIN pg_proc p ON objid = p.oid
  WHERE extname = 'qel';
SELECT expect('members of the extension', count(*)::text, '18') FROM pg_depend
  JOIN pg_extension e ON refobjid = e.oid JOIN pg_proc p ON objid = p.oid WHERE extname = 'qel';
SELECT expect('a view of before', text, 'ab') FROM visible;

-- What all engines do alike.

CREATE TABLE cases(expression text, expected text);
:cases
UPDATE cases SET expected = replace(expected, '\n', E'\n');
SELECT expect(expression, got, expected) FROM cases, value_of(expression) got
  WHERE expected NOT LIKE '!%' OR position(substr(expected, 2) IN got) < 2 OR got NOT LIKE '!%';
SELECT expect('rows of cases', (count(*) > 40)::text, 'true') FROM cases;
SELECT expect('bytes', qel_from_rtf('\x7b5c72746631e9005c75303f7d'::bytea), 'é');

-- Options that change from row to row.

SELECT expect(color, qel_to_html('/y1a', json_build_object('colors', json_build_object('1', color))),
              '<span style="color:' || color || '">a</span>')
  FROM unnest('{#010203,#040506,#040506}'::text[]) color;

-- 200,000 rows: two workers, a generated column, an index over the visible text.

CREATE TABLE notes(id integer, body text, visible text GENERATED ALWAYS AS (qel_plain(body)) STORED);
INSERT INTO notes(id, body)
  SELECT id, format('/b1Note %s/b0 about /i1%s/i0/nl', id, (ARRAY['tea', 'milk', 'sugar'])[id % 3 + 1])
             || repeat('with /u1more/u0 text ', 6)
    FROM generate_series(1, 200000) id;
CREATE INDEX notes_search ON notes USING gin(to_tsvector('simple', visible));
VACUUM ANALYZE notes;
SELECT expect('a parallel plan of ' || query, substring(plan(query), 'Workers Planned: \d'),
              'Workers Planned: 2')
  FROM unnest(ARRAY['SELECT sum(qel_length(body)) FROM notes',
                    'SELECT id FROM notes WHERE qel_find(body, ''tea'') = 99',
                    'SELECT max(octet_length(qel_from_rtf(qel_to_rtf(body)))) FROM notes']) query;
SELECT md5(string_agg(qel_upper(body), '' ORDER BY id)) AS parallel FROM notes \gset
SET max_parallel_workers_per_gather = 0;
SELECT expect('what workers make', md5(string_agg(qel_upper(body), '' ORDER BY id)), :'parallel')
  FROM notes;
SELECT expect('an index', substring(plan(query), 'on notes_search'), 'on notes_search'),
       expect('words in any order', value_of('(' || query || ')'), '66667')
  FROM (VALUES ('SELECT count(*) FROM notes
                 WHERE to_tsvector(''simple'', visible) @@ to_tsquery(''simple'', ''mi:* & note'')'))
       _(query);
SELECT expect('segments of rows', string_agg(text, ',' ORDER BY id, start), 'Note 1,milk,Note 2,sugar')
  FROM notes, qel_segments(body) WHERE id < 3 AND (bold OR italic);

-- Hostile texts: the memory beyond the value and work_mem, in multiples of the value or, where that is
-- larger, of the result.

CREATE TABLE hostile(piece text, source text);
INSERT INTO hostile SELECT piece, 'markup' FROM unnest(ARRAY[
  'a/nl', '/b1a/b0b', '/b1a', '/f1/y2a/f0/y0b', '/b1/i1/b0/i0', '~/b1', '~~/', '/', E'\t', E'\r\n', 'é', '日',
  '😀', 'word ', '(a']) piece;
INSERT INTO hostile SELECT piece, 'rtf' FROM unnest(ARRAY[
  '{\b ', '}', '\b a\b0 b', '\f1 a\f0 b', '\u233?', '\u55357?', '\par ', '\trowd\cell\row ', $$\'e9$$, 'é',
  '{\fonttbl{\f1 x;}}', '{\footnote a}', '\bin99999 ', '{\*\x', '\uc9 \u1 ', '/b1', '{\field{\*\fldinst']) piece;
CREATE TABLE calls(call text, source text);
INSERT INTO calls SELECT call, 'markup' FROM unnest(ARRAY[
  'qel_to_rtf(v)', 'qel_to_html(v)', 'qel_plain(v)', 'qel_length(v)', 'qel_find(v, ''zzz'')',
  'qel_left(v, 99999999)', 'qel_right(v, 99999999)', 'qel_mid(v, 9, 99999999)',
  'qel_stuff(v, 9, 9, ''/i1x'')', 'qel_upper(v)', 'qel_lower(v)', 'qel_title(v)',
  'qel_toggle(v, ''italic'', 9, 99999999)', 'qel_normalize(v)']) call;
INSERT INTO calls VALUES ('qel_from_rtf(''{\rtf1 '' || v)', 'rtf');

CREATE FUNCTION check_memory(call text, wanted text) RETURNS SETOF text LANGUAGE plpgsql AS $$
DECLARE size bigint; result bigint; before bigint; multiple numeric;
BEGIN
  PERFORM value_of(replace(call, '(v', '(''/b1a'''));
  before := peak() + pg_size_bytes(current_setting('work_mem'));
  EXECUTE 'SELECT max(octet_length(v)), max(octet_length((' || call || ')::text))
             FROM (SELECT repeat(piece, 2000000 / octet_length(piece)) AS v FROM hostile
                    WHERE piece = $1 OFFSET 0) _' INTO size, result USING wanted;
  multiple := round((peak() - before - size) / greatest(size, result)::numeric, 1);
  RETURN QUERY SELECT expect(call || ' of ' || wanted || ': memory', multiple::text, 'at most 6')
    WHERE multiple > 6;
END $$;
-- Each in a process of its own, since one keeps memory that was released.
SELECT format(E'\\connect -\nSELECT check_memory(%L, %L);', call, piece)
  FROM calls NATURAL JOIN hostile \g :script
\i :script

-- Errors leave nothing behind.

SELECT peak() AS before \gset
SELECT count(value_of('qel_toggle(repeat(''/b1a'', 50000), ''loud'', 1, 1)')),
       count(value_of('qel_from_rtf(repeat(''a'', 300000), ''{"to": "pdf"}'')'))
  FROM generate_series(1, 2000) \gset
SELECT expect('memory after errors', (peak() - :before < 50e6)::text, 'true');

-- Other encodings: a character that one lacks is an error, as it is in any conversion.

CREATE DATABASE western ENCODING 'LATIN1' LOCALE 'C' TEMPLATE template0;
SELECT current_database() AS database \gset
\connect western
SET client_encoding = 'UTF8';
CREATE EXTENSION qel;
SELECT concat_ws(' ', qel_length('/b1é'), qel_upper('é'), qel_find('aé/b1ü', 'ü'), qel_from_rtf('{\rtf1 \u233?ü}'),
                 qel_from_rtf('\x7b5c7274663120e97d'::bytea), (SELECT text FROM qel_segments('/b1éü')),
                 qel_to_html('/f1é', '{"fonts": {"1": "Fé"}}')) AS got \gset
SELECT 'FAILED: in LATIN1: ' || :'got'
  WHERE :'got' <> '1 É 3 éü é éü <span style="font-family:''Fé''">é</span>';
\set ON_ERROR_STOP off
SELECT qel_from_rtf('{\rtf1 \u8364?}') \g /dev/null
\set ON_ERROR_STOP on
SELECT 'FAILED: the euro in LATIN1 ' || :'SQLSTATE' WHERE :'SQLSTATE' <> '22P05';
\connect :database

-- A statement that is cancelled stops within a second, within a value of 100 MB too.

CREATE TABLE started(at timestamptz);
CREATE TABLE stopped(call text, after interval);
INSERT INTO calls VALUES ('(SELECT count(*) FROM qel_segments(v))', 'markup');
SET statement_timeout = 200;
\set ON_ERROR_STOP off
SELECT 'INSERT INTO started VALUES (clock_timestamp())',
       format('SELECT octet_length((%s)::text) FROM (SELECT repeat(%L, 12500000) AS v OFFSET 0) _', call,
              CASE source WHEN 'rtf' THEN '\b a\b0 ' ELSE '/b1a/b0b' END),
       format('INSERT INTO stopped SELECT %L, clock_timestamp() - max(at) FROM started', call)
  FROM calls \gexec
\set ON_ERROR_STOP on
RESET statement_timeout;
SELECT expect(call || ' is cancelled', after::text, 'within a second') FROM stopped
  WHERE after NOT BETWEEN '0.2 s' AND '1.2 s';
SELECT expect('calls that are cancelled', count(*)::text, '16') FROM stopped;
