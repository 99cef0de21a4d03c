-- Notes as markup with a full-text index over what a reader sees of them.
--   sqlite3 -cmd '.load build/release/sql/sqlite/qel' < examples/sql/notes.sqlite.sql
--
-- The visible text is a column of its own, computed when a note is written. The triggers take it
-- out of the index by what that column held, so that an extension of another version, which may see
-- another text, cannot spoil the index. A program that has not loaded the extension can read, but
-- not write: nothing becomes stale.
--
-- Triggers that write to FTS5 need PRAGMA trusted_schema, which is on unless somebody turned it off.

CREATE TABLE notes(
  id INTEGER PRIMARY KEY,
  body TEXT NOT NULL,
  visible TEXT GENERATED ALWAYS AS (qel_plain(body)) STORED);

CREATE VIRTUAL TABLE notes_search USING fts5(
  visible, content = 'notes', content_rowid = 'id');

CREATE TRIGGER notes_added AFTER INSERT ON notes BEGIN
  INSERT INTO notes_search(rowid, visible) VALUES (new.id, new.visible);
END;
CREATE TRIGGER notes_removed AFTER DELETE ON notes BEGIN
  INSERT INTO notes_search(notes_search, rowid, visible) VALUES ('delete', old.id, old.visible);
END;
CREATE TRIGGER notes_changed AFTER UPDATE ON notes BEGIN
  INSERT INTO notes_search(notes_search, rowid, visible) VALUES ('delete', old.id, old.visible);
  INSERT INTO notes_search(rowid, visible) VALUES (new.id, new.visible);
END;

INSERT INTO notes(body) VALUES
  ('/b1Tea/b0 for two/nlgreen, not /i1bl/i0ack'),
  ('Coffee, /y2black/y0'),
  (qel_from_rtf('{\rtf1 The \b teapot\b0  is broken}'));

-- Words in any order, the last one as it is being typed; the best first, with what was found.
SELECT notes.id, snippet(notes_search, 0, '[', ']', '...', 8) AS found
  FROM notes_search JOIN notes ON notes.id = notes_search.rowid
  WHERE notes_search MATCH 'black te*' ORDER BY rank;

UPDATE notes SET body = qel_stuff(body, qel_find(body, 'broken'), 6, '/i1mended/i0') WHERE id = 3;
SELECT id, body FROM notes WHERE id IN (SELECT rowid FROM notes_search('mended'));

-- What is emphasised in which note.
SELECT id, text FROM notes, qel_segments(body) WHERE bold OR italic ORDER BY id, start;
