-- Prints, for each function, notes of 1 kB a second by the clock: without workers, and in one and two
-- workers while the leader only gathers; and a cost that says as much in units of the planner.
SET client_min_messages = warning;
CREATE EXTENSION qel;
CREATE UNLOGGED TABLE notes(id integer, body text, rtf text, html text);
-- 20 codes a note.
INSERT INTO notes(id, body)
  SELECT id, format('/b1Note %s/b0 on /y2tea/y0 and /f2milk/f0/nl', id)
             || repeat('Some /i1emphasis/i0 in a text that goes on and on, word after word, as notes do; there '
                       'is no end of words in it, and none of sentences, either. ', 6) || repeat('x ', 30)
    FROM generate_series(1, 200000) id;
UPDATE notes SET rtf = qel_from_rtf('') || qel_to_rtf(body), html = qel_to_html(body);
VACUUM FULL notes;
ANALYZE notes;
ALTER TABLE notes SET (parallel_workers = 2);
SET parallel_setup_cost = 0;
SET parallel_tuple_cost = 0;
SET parallel_leader_participation = off;
SET jit = off;

CREATE TABLE rates(call text, workers integer, rate numeric);
CREATE FUNCTION measure(call text, workers integer) RETURNS void LANGUAGE plpgsql AS $$
DECLARE began timestamptz;
BEGIN
  PERFORM set_config('max_parallel_workers_per_gather', workers::text, false);
  began := clock_timestamp();
  EXECUTE 'SELECT sum(length((' || call || ')::text)) FROM notes';
  INSERT INTO rates VALUES (call, workers, 200000 / extract(epoch FROM clock_timestamp() - began));
END $$;
SELECT avg(octet_length(body))::integer AS bytes, avg(octet_length(rtf))::integer AS rtf,
       avg(octet_length(html))::integer AS html FROM notes;
DO $$
DECLARE one text;
BEGIN
  FOREACH one IN ARRAY ARRAY['body', 'md5(body)', 'qel_plain(body)', 'qel_length(body)', 'qel_find(body, ''either'')',
      'qel_mid(body, 300, 300)', 'qel_stuff(body, 300, 10, ''/b1new'')', 'qel_upper(body)', 'qel_title(body)',
      'qel_toggle(body, ''bold'', 300, 300)', 'qel_normalize(body)', 'qel_to_html(body)', 'qel_to_rtf(body)',
      'qel_from_rtf(rtf)', 'qel_from_html(html)'] LOOP
    FOR workers IN 0..2 LOOP PERFORM measure(one, workers); END LOOP;
  END LOOP;
END $$;
SELECT call, max(rate) FILTER (WHERE workers = 0)::integer AS alone,
       max(rate) FILTER (WHERE workers = 1)::integer AS one_worker,
       max(rate) FILTER (WHERE workers = 2)::integer AS two_workers,
       (1e6 / max(rate) FILTER (WHERE workers = 0))::numeric(9, 2) AS microseconds
  FROM rates GROUP BY call ORDER BY alone DESC;
