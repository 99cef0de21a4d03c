-- The functions of the extension: what CREATE EXTENSION installs, and what an update brings an
-- earlier version to. The costs are those of notes of 1 kB, as scripts/bench-postgres measures them: a
-- unit of the planner's is some 0.035 microseconds.
\echo Use "CREATE EXTENSION qel" to load this file. \quit

CREATE OR REPLACE FUNCTION qel_to_rtf(markup text, options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_to_rtf' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 250;

CREATE OR REPLACE FUNCTION qel_from_rtf(rtf text, options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_from_rtf' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 400;

CREATE OR REPLACE FUNCTION qel_from_rtf(rtf bytea, options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_from_rtf_bytes' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 400;

CREATE OR REPLACE FUNCTION qel_to_html(markup text, options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_to_html' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 300;

CREATE OR REPLACE FUNCTION qel_from_html(html text, options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_from_html' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 2500;

CREATE OR REPLACE FUNCTION qel_plain(markup text, options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_plain' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 100;

CREATE OR REPLACE FUNCTION qel_length(markup text, options json DEFAULT '{}') RETURNS integer
AS 'MODULE_PATHNAME', 'qelpg_length' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 100;

CREATE OR REPLACE FUNCTION qel_find(markup text, what text, options json DEFAULT '{}')
RETURNS integer
AS 'MODULE_PATHNAME', 'qelpg_find' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 100;

CREATE OR REPLACE FUNCTION qel_left(markup text, count integer, options json DEFAULT '{}')
RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_left' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 100;

CREATE OR REPLACE FUNCTION qel_right(markup text, count integer, options json DEFAULT '{}')
RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_right' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 100;

CREATE OR REPLACE FUNCTION qel_mid(markup text, start integer, count integer,
                                   options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_mid' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 100;

CREATE OR REPLACE FUNCTION qel_stuff(markup text, start integer, count integer, replacement text,
                                     options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_stuff' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 150;

CREATE OR REPLACE FUNCTION qel_upper(markup text, options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_upper' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 300;

CREATE OR REPLACE FUNCTION qel_lower(markup text, options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_lower' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 300;

CREATE OR REPLACE FUNCTION qel_title(markup text, options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_title' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 300;

CREATE OR REPLACE FUNCTION qel_toggle(markup text, attribute text, start integer, count integer,
                                      options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_toggle' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 150;

CREATE OR REPLACE FUNCTION qel_normalize(markup text, options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_normalize' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 150;

CREATE OR REPLACE FUNCTION qel_segments(
  markup text, options json DEFAULT '{}', OUT start integer, OUT line_breaks integer,
  OUT text text, OUT bold boolean, OUT italic boolean, OUT underline boolean, OUT strike boolean,
  OUT superscript boolean, OUT subscript boolean, OUT small_caps boolean, OUT font integer,
  OUT color integer) RETURNS SETOF record
AS 'MODULE_PATHNAME', 'qelpg_segments' LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 300 ROWS 10;
