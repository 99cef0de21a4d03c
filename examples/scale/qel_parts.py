"""Converts a field of the records in one part of many, for any engine that spreads the parts.

An output appears whole or not at all. All but the field is in it as it was, byte for byte: numbers
that Python would round, and values in CSV that are empty with quotes and without.
"""

from __future__ import annotations

import csv
import json
import os
import re
import socket
import sys
import time
import uuid
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path
from typing import Callable, Dict, Iterable, Iterator, List, NamedTuple, Optional, TextIO, Tuple

import qel

PIECE_RECORDS = 512
PIECE_CHARACTERS = 4_000_000


@dataclass(frozen=True)
class Job:
    """What is the same for all parts."""

    source: Path
    target: Path
    field: str
    new: str
    from_format: Optional[str]
    to_format: str
    on_error: str  #: "pass" writes bad records as they are, "skip" leaves them out

    def is_done(self, name: str) -> bool:
        source, output = self.source / name, self.target / name
        return output.exists() and output.stat().st_mtime_ns > source.stat().st_mtime_ns

    def bad_list(self, name: str) -> Path:
        """The bad records of one part, listed before its output appears."""
        return self.target / f"{name}.bad"


class BadRecord(NamedTuple):
    part: str
    line: int  #: the one that it begins on, from 1
    message: str


class Counts(NamedTuple):
    notes: int = 0
    bytes_in: int = 0
    bytes_out: int = 0
    seconds: float = 0.0  #: of processor time

    def plus(self, more: Counts) -> Counts:
        return Counts(*map(sum, zip(self, more)))


def convert_part(job: Job, name: str) -> Counts:
    """Converts one part. Workers that do so after each other, or at a time, write the same."""
    began = time.thread_time()
    source = job.source / name
    state = source.stat()
    part = Part(job, name)
    with replacing(job.target / name) as output:
        # What is not UTF-8 is kept for records that pass as they are.
        with open(source, encoding="utf-8", errors="surrogateescape", newline="\n") as file:
            part.convert(file, output)
        if (source.stat().st_mtime_ns, source.stat().st_size) != (state.st_mtime_ns, state.st_size):
            raise RuntimeError("the part has changed while it was read")
        part.write_bad_list()
        written = output.tell()
    return Counts(part.notes, state.st_size, written, time.thread_time() - began)


class Part:
    """Converts records in pieces and notes the bad ones."""

    def __init__(self, job: Job, name: str):
        self._job, self._name = job, name
        self._format = FORMATS[Path(name).suffix](job.field, job.new)
        self._converter = qel.Converter(job.from_format, job.to_format)
        self._bad: List[BadRecord] = []
        self.notes = 0

    def convert(self, source: TextIO, output: TextIO) -> None:
        mark = source.read(1)
        if mark == "\ufeff":
            output.write(mark)
        else:
            source.seek(0)
        records = self._format.split(source)
        header = self._format.header(records)
        output.write(header)
        piece: List[Tuple[int, str, Record]] = []
        characters, line = 0, 1 + header.count("\n")
        for raw in records:
            piece += self._parsed(line, raw)
            characters += len(raw)
            line += raw.count("\n")
            if len(piece) >= PIECE_RECORDS or characters >= PIECE_CHARACTERS:
                output.writelines(self._converted(piece))
                piece, characters = [], 0
        output.writelines(self._converted(piece))

    def write_bad_list(self) -> None:
        bad_list = self._job.bad_list(self._name)
        if self._bad:
            with replacing(bad_list) as output:
                write_rows(output, sorted(self._bad))
        else:
            bad_list.unlink(missing_ok=True)

    def _parsed(self, line: int, raw: str) -> Iterator[Tuple[int, str, Record]]:
        try:
            raw.encode()
            yield line, raw, self._format.parse(raw)
            return
        except UnicodeEncodeError:
            self._note(line, "not UTF-8")
        except RecursionError:
            self._note(line, "nested too deep")
        except ValueError as error:
            self._note(line, str(error))
        if self._job.on_error == "pass":
            yield line, raw, Record(raw)

    def _converted(self, piece: List[Tuple[int, str, Record]]) -> Iterator[str]:
        texts = [record.text for _, _, record in piece]
        self.notes += len(texts) - texts.count(None)
        results = self._converter.convert_many(texts, errors="none")
        for (line, raw, record), result in zip(piece, results):
            if result is not None:
                yield record.with_text(result)
            elif record.text is None:
                yield record.before
            else:
                self._note(line, self._reason(record.text))
                if self._job.on_error == "pass":
                    yield raw

    def _reason(self, text: str) -> str:
        """Why a text cannot be converted."""
        try:
            self._converter.convert(text)
        except qel.Error as error:
            return str(error)
        raise AssertionError("a text is converted alone, but not with others")

    def _note(self, line: int, message: str) -> None:
        self._bad.append(BadRecord(self._name, line, message))


# ---- Files -------------------------------------------------------------------------------------


@contextmanager
def replacing(path: Path) -> Iterator[TextIO]:
    """Writes a file that takes the place of `path` at the end, safe on the disk."""
    unique = f"{socket.gethostname()}.{os.getpid()}.{uuid.uuid4().hex}"
    temporary = path.with_name(f".{path.name}.{unique}.qel-tmp")
    try:
        with open(temporary, "x", encoding="utf-8", errors="surrogateescape", newline="") as file:
            yield file
            file.flush()
            os.fsync(file.fileno())
        os.replace(temporary, path)
    finally:
        temporary.unlink(missing_ok=True)
    folder = os.open(path.parent, os.O_RDONLY)
    try:
        os.fsync(folder)
    finally:
        os.close(folder)


def remove_temporaries(folder: Path) -> None:
    """Removes what killed processes have left."""
    for temporary in folder.glob(".*.qel-tmp"):
        temporary.unlink(missing_ok=True)


def write_rows(output: TextIO, rows: Iterable[Iterable]) -> None:
    csv.writer(output, delimiter="\t", lineterminator="\n").writerows(rows)


def collect_bad_records(job: Job, names: List[str]) -> int:
    """Joins the lists of parts, those of earlier runs too; returns how many records they hold."""
    count = 0
    with replacing(job.target / "bad-records.tsv") as output:
        write_rows(output, [BadRecord._fields])
        for bad_list in filter(Path.exists, map(job.bad_list, names)):
            with open(bad_list, encoding="utf-8", newline="") as file:
                rows = list(csv.reader(file, delimiter="\t"))
            write_rows(output, rows)
            count += len(rows)
    return count


# ---- Formats of records: what is none raises a ValueError ----------------------------------------


class Record(NamedTuple):
    before: str
    text: Optional[str] = None  #: what to convert; None: nothing, and `before` is all of the record
    after: str = ""
    spell: Callable[[str], str] = str  #: how the format writes a value

    def with_text(self, text: str) -> str:
        return f"{self.before}{self.spell(text)}{self.after}"


class JsonLines:
    """JSON objects, one on each line. One without the field passes as it is; null stays null."""

    _decoder = json.JSONDecoder()
    _spell = staticmethod(json.JSONEncoder(ensure_ascii=False).encode)
    _blanks = re.compile(r"[\s,:]*")

    def __init__(self, field: str, new: str):
        self._field, self._new = field, new

    def split(self, lines: Iterable[str]) -> Iterator[str]:
        return iter(lines)

    def header(self, records: Iterator[str]) -> str:
        return ""

    def parse(self, record: str) -> Record:
        values = json.loads(record) if record.strip() else {}
        if not isinstance(values, dict):
            raise ValueError("not a JSON object")
        if self._field not in values:
            return Record(record)
        text = values[self._field]
        if text is not None and not isinstance(text, str):
            raise ValueError(f"field '{self._field}' is not a string")
        spans = self._spans(record)
        if self._new in spans:
            begin, end = spans[self._new]
            before = record[:begin]
        else:
            end = spans[self._field][1]
            before = f"{record[:end]},{self._spell(self._new)}:"
        if text is None:
            return Record(f"{before}null{record[end:]}")
        if not text.isascii():  # Escapes may be halves of surrogate pairs, which are no text.
            text = text.encode("utf-16", "surrogatepass").decode("utf-16", "replace")
        return Record(before, text, record[end:], self._spell)

    def _spans(self, record: str) -> Dict[str, Tuple[int, int]]:
        """Where the values stand in a JSON object."""
        spans = {}
        at = self._blanks.match(record, record.index("{") + 1).end()
        while record[at] != "}":
            name, at = self._decoder.raw_decode(record, at)
            begin = self._blanks.match(record, at).end()
            end = self._decoder.raw_decode(record, begin)[1]
            spans[name] = begin, end
            at = self._blanks.match(record, end).end()
        return spans


class Csv:
    """Comma-separated values, with commas, line breaks and doubled quotes within quotes. The first
    record names the fields.
    """

    _value = re.compile(r',("[^"]*(?:""[^"]*)*"(?=,|\Z)|(?!")[^,]*)')

    def __init__(self, field: str, new: str):
        self._field, self._new = field, new
        self._names: List[str] = []

    def split(self, lines: Iterable[str]) -> Iterator[str]:
        taken: List[str] = []

        def noted() -> Iterator[str]:
            for line in lines:
                taken.append(line)
                yield line

        csv.field_size_limit(sys.maxsize)
        reader = csv.reader(noted())
        while True:
            try:
                next(reader)
            except csv.Error:
                pass  # A carriage return within a value, which does no harm here.
            except StopIteration:
                return
            yield "".join(taken)
            taken.clear()

    def header(self, records: Iterator[str]) -> str:
        """Takes the first record, and returns what to write in its place."""
        record = next(records, None)
        if record is None:
            return ""
        body, end = self._without_end(record)
        self._names = [self._text(value) for value in self._values(body)]
        if self._field not in self._names:
            raise ValueError(f"no field is named '{self._field}'")
        return record if self._new in self._names else f"{body},{self._spell(self._new)}{end}"

    def parse(self, record: str) -> Record:
        body, end = self._without_end(record)
        if not body and len(self._names) > 1:
            return Record(record)
        values = self._values(body)
        if len(values) != len(self._names):
            raise ValueError(f"{len(values)} fields instead of {len(self._names)}")
        text = self._text(values[self._names.index(self._field)])
        if self._new not in self._names:
            return Record(body + ",", text, end, self._spell)
        at = self._names.index(self._new)
        before = "".join(value + "," for value in values[:at])
        after = "".join("," + value for value in values[at + 1 :]) + end
        return Record(before, text, after, self._quoted if values[at][:1] == '"' else self._spell)

    def _values(self, body: str) -> List[str]:
        """The values as they are written."""
        values = self._value.findall("," + body)
        if sum(map(len, values)) + len(values) != len(body) + 1:
            raise ValueError("a quote is not closed, or a value goes on behind its closing quote")
        return values

    @staticmethod
    def _without_end(record: str) -> Tuple[str, str]:
        end = "\r\n" if record.endswith("\r\n") else "\n" if record.endswith("\n") else ""
        return record[: len(record) - len(end)], end

    @staticmethod
    def _text(value: str) -> str:
        return value[1:-1].replace('""', '"') if value[:1] == '"' else value

    @staticmethod
    def _quoted(text: str) -> str:
        return '"' + text.replace('"', '""') + '"'

    @classmethod
    def _spell(cls, text: str) -> str:
        return cls._quoted(text) if re.search('[,"\r\n]', text) else text


FORMATS = {".jsonl": JsonLines, ".csv": Csv}
