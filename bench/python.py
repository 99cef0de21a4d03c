"""Rates of `convert_many`: notes of 1 kB to RTF and back, to HTML and to text."""

import random
import sys
import time

import qel

CODES = ["/b1", "/b0", "/i1", "/i0", "/u1", "/u0", "/y1", "/y0", "/f1", "/f0", "/nl"]
LETTERS = "abcdefghijklmnopqrstuvwxyz"


def note(source):
    """1,000 characters or so with some 20 codes."""
    parts = []
    for _ in range(20):
        words = ["".join(source.choices(LETTERS, k=source.randint(2, 9))) for _ in range(7)]
        parts.append(" ".join(words) + " " + source.choice(CODES))
    return "".join(parts)


def measure(name, converter, texts, threads):
    rates = []
    for _ in range(3):
        wall, cpu = time.perf_counter(), time.process_time()
        converter.convert_many(texts, threads)
        wall, cpu = time.perf_counter() - wall, time.process_time() - cpu
        rates.append((len(texts) / wall, len(texts) / cpu))
    by_wall, by_cpu = max(rates)
    print(f"{name:10} {threads} threads  {by_wall:9,.0f}/s  {by_cpu:9,.0f} per second of processor")


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 200_000
    source = random.Random(1)
    some = [note(source) for _ in range(20_000)]
    notes = [some[i % len(some)] + str(i) for i in range(count)]
    print(f"{count:,} notes of {sum(map(len, notes)) / count:,.0f} characters")
    rtf = qel.Converter("qel", "rtf").convert_many(notes)
    for threads in (1, 2):
        measure("to RTF", qel.Converter("qel", "rtf"), notes, threads)
        measure("from RTF", qel.Converter("rtf", "qel"), rtf, threads)
        measure("to HTML", qel.Converter("qel", "html"), notes, threads)
        measure("to text", qel.Converter("qel", "text"), notes, threads)


main()
