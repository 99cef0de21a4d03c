#!/usr/bin/env python3
"""The functions in SQLite: the cases of all engines, and what only SQLite has.

Usage: sqlite.py EXTENSION
"""

import os
import re
import sqlite3
import subprocess
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))


def connect(path=":memory:"):
    connection = sqlite3.connect(path)
    connection.enable_load_extension(True)
    connection.load_extension(EXTENSION)
    return connection


def cases():
    with open(os.path.join(HERE, "cases.tsv"), encoding="utf-8") as rows:
        for row in rows:
            expression, expected = row.rstrip("\n").split("\t")
            yield expression, expected.replace("\\n", "\n")


class Sqlite(unittest.TestCase):
    def setUp(self):
        self.connection = connect()

    def tearDown(self):
        self.connection.close()

    def value(self, sql, *values):
        return self.connection.execute(sql, values).fetchone()[0]

    def refuses(self, message, sql, *values):
        with self.assertRaisesRegex(sqlite3.Error, message):
            self.connection.execute(sql, values).fetchall()

    def test_cases(self):
        for expression, expected in cases():
            with self.subTest(expression):
                query = f"SELECT coalesce(CAST(({expression}) AS text), 'NULL')"
                if expected.startswith("!"):
                    self.refuses(re.escape(expected[1:]), query)
                else:
                    self.assertEqual(self.value(query), expected)

    def test_bytes_and_characters(self):
        """RTF in a blob is bytes; no text has a NUL, which would end it for SQLite."""
        rows = [("qel_from_rtf(?)", b"{\\rtf1 \xe9\x00\\u0?}", "é"),
                ("qel_from_rtf(?)", "{\\rtf1 é\0\\u0?}", "é"),
                ("qel_plain(?)", "/b1a\0b", "ab"),
                ("qel_to_rtf(?, '{\"to\": \"rtf-body\"}')", "a\0é", "a\\'e9"),
                ("qel_from_rtf(?)", b"", "")]
        for call, value, expected in rows:
            with self.subTest(value):
                self.assertEqual(self.value(f"SELECT {call}", value), expected)
        self.connection.execute("PRAGMA encoding = 'UTF-16le'")
        self.connection.execute("CREATE TABLE t(a)")
        self.assertEqual(self.value("SELECT qel_stuff('é😀b', 2, 1, '/b1日')"), "é/b1日/b0b")

    def test_options_of_each_row(self):
        """They are kept from row to row only where they are the same in all rows."""
        rows = self.connection.execute(
            """SELECT qel_to_html('/y1a', colors), qel_to_html('/y1a', '{"colors": {"1": "#000003"}}')
               FROM (SELECT '{"colors": {"1": "#00000' || value || '"}}' AS colors
                     FROM json_each('[1, 2]'))""").fetchall()
        self.assertEqual([[re.search("#(.*)\"", html)[1] for html in row] for row in rows],
                         [["000001", "000003"], ["000002", "000003"]])
        self.refuses("bogus", "SELECT qel_plain('a', value) FROM json_each(?)",
                     '["{}", "{\\"bogus\\": 1}"]')

    def test_in_a_schema_that_is_not_trusted(self):
        self.connection.executescript("""
            PRAGMA trusted_schema = OFF;
            CREATE TABLE notes(body TEXT, visible TEXT AS (qel_plain(body)) STORED,
                               bold TEXT AS (qel_find(body, 'x') > 0) CHECK (qel_length(body) < 9));
            CREATE INDEX by_length ON notes(qel_length(body));
            CREATE VIEW segments AS SELECT text, italic FROM notes, qel_segments(body);
            CREATE TABLE seen(text);
            CREATE TRIGGER added AFTER INSERT ON notes
              BEGIN INSERT INTO seen SELECT text FROM qel_segments(new.body) WHERE bold; END;
            INSERT INTO notes(body) VALUES ('a/b1bc'), ('/i1d');""")
        plan = self.connection.execute(
            "EXPLAIN QUERY PLAN SELECT visible FROM notes WHERE qel_length(body) = 3").fetchone()
        self.assertIn("by_length", plan[3])
        self.assertEqual(self.value("SELECT visible FROM notes WHERE qel_length(body) = 3"), "abc")
        self.assertEqual(self.value("SELECT group_concat(text) FROM segments"), "a,bc,d")
        self.assertEqual(self.value("SELECT text FROM seen"), "bc")
        self.assertEqual(self.value("PRAGMA integrity_check"), "ok")
        self.refuses("CHECK", "INSERT INTO notes(body) VALUES ('123456789')")

    def test_rows_of_segments(self):
        rows = [("SELECT count(*) FROM qel_segments", 0),
                ("SELECT sum(rowid) FROM qel_segments('a/b1b/i1c')", 6),
                ("SELECT text FROM qel_segments WHERE options = '{}' AND markup = '/b1a'", "a"),
                ("SELECT count(*) FROM qel_segments('a/b1b') x, qel_segments(x.text || '/i1c') y", 4),
                ("SELECT count(*) FROM qel_segments('a', null)", 0)]
        for query, expected in rows:
            with self.subTest(query):
                self.assertEqual(self.value(query), expected)
        self.refuses("colour", "SELECT * FROM qel_segments('a', ?)", '{"colour": 1}')
        self.refuses("too many arguments", "SELECT * FROM qel_segments('a', '{}', 1)")

    def test_results_too_large(self):
        self.connection.setlimit(sqlite3.SQLITE_LIMIT_LENGTH, 1000)
        self.refuses("too big", "SELECT qel_to_rtf(?)", "a\t" * 400)
        self.assertEqual(self.value("SELECT qel_length(?)", "a\t" * 400), 800)

    def test_example(self):
        """In the shell, where a file named qel needs no entry point."""
        with open(os.path.join(HERE, "../../examples/sql/notes.sqlite.sql"), encoding="utf-8") as example:
            shown = subprocess.run(["sqlite3", "-cmd", f".load {EXTENSION}", ":memory:"], check=True,
                                   stdin=example, capture_output=True, text=True).stdout
        self.assertEqual(shown, """\
1|[Tea] for two
green, not [black]
3|The /b1teapot/b0 is /i1mended/i0
1|Tea
1|bl
3|teapot
3|mended
""")


EXTENSION = os.path.abspath(sys.argv.pop(1))
unittest.main()
