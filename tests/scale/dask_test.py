"""The example for Dask on a cluster of two worker processes; what the command makes of each part is
what has to come out.

Usage: dask_test.py QEL
"""

import csv
import json
import os
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

import psutil
from dask.distributed import Client, LocalCluster

SCRIPT = Path(__file__).parents[2] / "examples/scale/dask_convert.py"
NOTES = 200
TEMPORARIES = ".*.qel-tmp"


def note(number):
    return f'/b1Note/b0 {number}, "é/i1ö/i0"\nand so on' + f" /y2{number % 7}/y0 ~/b1" * 60


def write_parts(folder):
    """20 parts; returns the bad records in them: part, line, words of the message."""
    for part in range(17):
        lines = [f'{{ "id":{i},"note":{json.dumps(note(i))}, "f":1.50}}' for i in range(NOTES)]
        (folder / f"p{part:02}.jsonl").write_text("\n".join(lines), encoding="utf-8")
    for part in range(17, 20):
        with open(folder / f"p{part}.csv", "w", encoding="utf-8-sig", newline="") as file:
            file.write("note,id,rtf\r\n" if part == 18 else 'note,id,"a ""b"", c"\r\n')
            rows = csv.writer(file, lineterminator=',""\r\n')
            rows.writerows((note(i), i) for i in range(NOTES))
    with open(folder / "p03.jsonl", "ab") as file:
        file.write(b'\n\n{"id":1}\n{"note":null}\n{"note":5}\n{"note":"\\ud800x","rtf":[1]}\n')
        file.write(b'[]\n{"note":"\xff"}\n{"note":tru}\n')
    with open(folder / "p18.csv", "ab") as file:
        file.write(b'\r\na" b,1,\r\n"x\ny",2\r\n"a"b,3,\r\n/b1b,4,""\r\n",5')
    line = NOTES * 2 + 3
    return [
        ("p03.jsonl", NOTES + 4, "field 'note' is not a string"),
        ("p03.jsonl", NOTES + 6, "not a JSON object"),
        ("p03.jsonl", NOTES + 7, "not UTF-8"),
        ("p03.jsonl", NOTES + 8, "Expecting value"),
        ("p18.csv", line + 1, "2 fields instead of 3"),
        ("p18.csv", line + 3, "a quote is not closed"),
        ("p18.csv", line + 5, "a quote is not closed"),
    ]


def by_command(part):
    kind = "--csv" if part.suffix == ".csv" else "--json-lines"
    command = [QEL, "convert", part, kind, "note=rtf", "--to", "rtf", "--on-error", "pass"]
    return subprocess.run(command, check=True, capture_output=True).stdout


def kill_one(pids, folder):
    """Kills a worker that is writing an output; returns the name of its part."""
    end = time.monotonic() + 30
    while time.monotonic() < end:
        for temporary in folder.glob(TEMPORARIES):
            pid = next((pid for pid in pids if f".{pid}." in temporary.name), None)
            if pid is None:
                continue
            worker = psutil.Process(pid)
            worker.suspend()
            while worker.status() != psutil.STATUS_STOPPED:
                time.sleep(0.001)
            if temporary.exists():
                worker.kill()
                return temporary.name[1:].partition(".jsonl")[0] + ".jsonl"
            worker.resume()
    raise AssertionError("no worker was seen writing")


class Dask(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        self.source, self.target = self.folder / "notes", self.folder / "letters"
        self.source.mkdir()
        self.target.mkdir()

    def started(self, *options):
        return subprocess.Popen(
            [sys.executable, SCRIPT, self.source, self.target, *options],
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            encoding="utf-8",
        )

    def finishes(self, process, status, parts):
        output, errors = process.communicate(timeout=60)
        self.assertEqual(process.returncode, status, output + errors)
        self.assertIn(parts, output)
        self.assertEqual(list(self.target.glob(TEMPORARIES)), [])
        return errors

    def check_outputs(self, names):
        for name in names:
            same = (self.target / name).read_bytes() == by_command(self.source / name)
            self.assertTrue(same, name)

    def check_bad(self, expected):
        with open(self.target / "bad-records.tsv", encoding="utf-8", newline="") as file:
            rows = list(csv.reader(file, delimiter="\t"))[1:]
        self.assertEqual(len(rows), len(expected), rows)
        for (part, line, message), (in_part, on_line, words) in zip(rows, expected):
            self.assertEqual((part, int(line)), (in_part, on_line), message)
            self.assertIn(words, message)

    def test_runs(self):
        bad = write_parts(self.source)
        names = sorted(os.listdir(self.source))
        cluster = LocalCluster(
            n_workers=2,
            threads_per_worker=1,
            host="127.0.0.1",
            dashboard_address=None,
            local_directory=str(self.folder),
        )
        options = ["--field", "note=rtf", "--to", "rtf", "--scheduler", cluster.scheduler_address]
        with cluster, Client(cluster) as client:
            pids = list(client.run(os.getpid).values())
            first = self.started(*options)
            killed = kill_one(pids, self.target)
            self.assertFalse((self.target / killed).exists())
            self.finishes(first, 0, "20 parts converted, 0 done before, 0 failed")
            self.check_outputs(names)
            self.check_bad(bad)

            again = self.started(*options)
            self.finishes(again, 0, "0 parts converted, 20 done before, 0 failed")

            (self.target / "p07.jsonl").unlink()
            os.utime(self.source / "p18.csv")
            (self.target / ".p07.jsonl.elsewhere.1.0.qel-tmp").write_text("half")
            others = [name for name in names if name not in ("p07.jsonl", "p18.csv")]
            before = [os.stat(self.target / name).st_mtime_ns for name in others]
            third = self.started(*options)
            self.finishes(third, 0, "2 parts converted, 18 done before, 0 failed")
            self.check_outputs(names)
            self.check_bad(bad)
            after = [os.stat(self.target / name).st_mtime_ns for name in others]
            self.assertEqual(after, before)

    def test_own_cluster_and_a_part_that_fails(self):
        (self.source / "a.csv").write_text("name\n/b1x\n")
        (self.source / "b.jsonl").write_text(
            '{"note":"/b1x"}\n{\n{"note":"\\u007fELF\\u0000\\u0000"}\n{"note":"y"}'
        )
        options = ["--field", "note", "--to", "text", "--on-error", "skip", "--workers", "1"]
        run = self.started(*options)
        errors = self.finishes(run, 1, "1 parts converted, 0 done before, 1 failed")
        self.assertIn("a.csv: no field is named 'note'", errors)
        self.assertFalse((self.target / "a.csv").exists())
        self.assertEqual((self.target / "b.jsonl").read_text(), '{"note":"x"}\n{"note":"y"}')
        self.check_bad([("b.jsonl", 2, "Expecting property"), ("b.jsonl", 3, "but binary data")])


if __name__ == "__main__":
    QEL = sys.argv.pop(1)
    unittest.main()
