#!/usr/bin/env python3
"""Converts a field of the records in many files, the parts, on a Dask cluster.

    dask_convert.py notes letters --field note=rtf --from qel --to rtf --workers 8
    dask_convert.py notes letters --field note=rtf --to rtf --scheduler tcp://head:8786

The parts are the files *.jsonl (JSON objects, one on each line) and *.csv (the first record names
the fields) of the input folder. Each becomes a file of the same name in the output folder, in which
all but the field is as it was, byte for byte. Only names and counts go over the network: workers
read and write the parts, so both folders are at the same path on all machines, and each machine has
the package qel.

An output appears whole or not at all. A part whose worker dies is converted by another one. A
second run converts only parts without an output or with an older one, whatever its options; two
runs at a time must not share an output folder. Bad records are listed in bad-records.tsv there.
"""

from __future__ import annotations

import argparse
import os
import resource
import socket
import sys
import tempfile
import time
from contextlib import ExitStack
from pathlib import Path
from typing import Dict, List, Tuple

import psutil
from dask import delayed
from dask.distributed import Client, LocalCluster, as_completed

import qel
import qel_parts
from qel_parts import (
    FORMATS,
    Counts,
    Job,
    collect_bad_records,
    convert_part,
    remove_temporaries,
)


def convert_parts(client: Client, job: Job, names: List[str]) -> Tuple[Counts, int]:
    """Converts parts; returns what was converted, and how many parts have failed."""
    futures = client.compute([delayed(convert_part)(job, name) for name in names], retries=2)
    name_of = {future.key: name for future, name in zip(futures, names)}
    waiting = as_completed(futures)
    # A result is fetched and forgotten: if its worker died, the part would be converted again.
    del futures
    counts, failed = Counts(), 0
    for future in waiting:
        if future.status == "finished":
            counts = counts.plus(future.result())
        else:
            failed += 1
            print(f"{name_of[future.key]}: {future.exception()}", file=sys.stderr)
    return counts, failed


def sent_bytes() -> Tuple[str, int]:
    """This machine, and what all of its programs have sent so far."""
    return socket.gethostname(), psutil.net_io_counters().bytes_sent


def sent_by_all(client: Client) -> Dict[str, int]:
    """What each machine of the cluster has sent so far."""
    by_workers = client.run(sent_bytes, on_error="ignore").values()
    return dict([*by_workers, client.run_on_scheduler(sent_bytes), sent_bytes()])


def peak_memory() -> int:
    """The most that this process has had, in kB."""
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss


def start(stack: ExitStack, given: argparse.Namespace) -> Client:
    """A client of the scheduler that was named, or of a cluster of processes."""
    address = given.scheduler
    if not address:
        scratch = stack.enter_context(tempfile.TemporaryDirectory())
        cluster = LocalCluster(
            n_workers=given.workers,
            threads_per_worker=1,
            host="127.0.0.1",
            dashboard_address=None,
            local_directory=scratch,
        )
        address = stack.enter_context(cluster).scheduler_address
    client = stack.enter_context(Client(address))
    client.upload_file(qel_parts.__file__)
    return client


def arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("source", type=Path, help="folder of parts")
    parser.add_argument("target", type=Path, help="folder of outputs, made where it is missing")
    parser.add_argument("--field", required=True, metavar="FIELD[=NEW]", help="as with qel convert")
    parser.add_argument("--from", dest="from_format", help="by the first bytes unless given")
    parser.add_argument("--to", dest="to_format", required=True)
    parser.add_argument("--on-error", choices=["pass", "skip"], default="pass")
    where = parser.add_mutually_exclusive_group()
    where.add_argument("--scheduler", help="address; starts a cluster here unless given")
    where.add_argument("--workers", type=int, default=os.cpu_count(), help="processes of that")
    given = parser.parse_args()
    if given.target.resolve() == given.source.resolve():
        parser.error("the outputs would replace the parts")
    return given


def main() -> int:
    given = arguments()
    field, _, new = given.field.partition("=")
    job = Job(
        source=given.source.resolve(),
        target=given.target.resolve(),
        field=field,
        new=new or field,
        from_format=given.from_format,
        to_format=given.to_format,
        on_error=given.on_error,
    )
    qel.Converter(job.from_format, job.to_format)  # Raises an error for formats that do not exist.
    names = sorted(path.name for path in job.source.iterdir() if path.suffix in FORMATS)
    job.target.mkdir(parents=True, exist_ok=True)
    remove_temporaries(job.target)
    missing = [name for name in names if not job.is_done(name)]
    failed = 0
    if missing:
        with ExitStack() as stack:
            failed = run(start(stack, given), job, missing)
    done_before = len(names) - len(missing)
    print(f"{len(missing) - failed} parts converted, {done_before} done before, {failed} failed")
    remove_temporaries(job.target)
    print(f"{collect_bad_records(job, names)} bad records in {job.target / 'bad-records.tsv'}")
    return 1 if failed else 0


def run(client: Client, job: Job, names: List[str]) -> int:
    """Converts parts and prints how fast; returns how many have failed."""
    sent, began = sent_by_all(client), time.monotonic()
    counts, failed = convert_parts(client, job, names)
    seconds, sent_then = time.monotonic() - began, sent_by_all(client)
    peaks = client.run(peak_memory, on_error="ignore").values()
    if counts.notes:
        sent_since = sum(count - sent.get(host, count) for host, count in sent_then.items())
        print(f"{counts.notes} notes in {seconds:.2f} s")
        print(f"{counts.bytes_in} bytes to {counts.bytes_out}")
        print(f"{counts.notes / seconds:.0f} notes a second")
        print(f"{counts.notes / counts.seconds:.0f} notes a second of the workers' processor time")
        print(f"{sent_since / counts.notes:.2f} bytes a note sent by the machines, by all programs")
        print(f"{max(peaks, default=0) / 1000:.0f} MB at most in a worker")
    return failed


if __name__ == "__main__":
    sys.exit(main())
