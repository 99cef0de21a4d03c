"""The package, as it was installed from its wheel."""

import gc
import multiprocessing
import subprocess
import sys
import threading
import time
from concurrent.futures import ProcessPoolExecutor

import pytest

import qel

EMOJI = "a\n😀/b1bc/b0"


@pytest.mark.parametrize(
    "call, expected",
    [
        (lambda: qel.plain("a/nl😀/b1b"), "a\n😀b"),
        (lambda: qel.length(EMOJI), 5),
        (lambda: qel.find(EMOJI, "B"), -1),
        (lambda: qel.find(EMOJI, "B", ignore_case=True), 3),
        (lambda: qel.find("abab", "b", 2), 3),
        (lambda: qel.left(EMOJI, 3), "a/nl😀"),
        (lambda: qel.right(EMOJI, 1), "/b1c/b0"),
        (lambda: qel.mid(EMOJI, 2), "😀/b1bc/b0"),
        (lambda: qel.stuff(EMOJI, 0, None, "x"), "x"),
        (lambda: qel.mid(EMOJI, 4, 2**99), "/b1c/b0"),
        (lambda: qel.length("a/nlb", lossless=False), 2),
        (lambda: qel.normalize("/b1/b0a"), "a"),
        (lambda: qel.toggle("ab", "font3", 1, 1), "a/f3b/f0"),
        (lambda: qel.from_rtf(rb"{\rtf1\ansi\ansicpg1251 \'e0" + b"\xe1}"), "аб"),
        (lambda: qel.from_rtf(r"{\rtf1\ansicpg1251 я}"), "я"),
        (lambda: qel.from_html('<meta charset="latin1">é'), "é"),
        (lambda: qel.from_html(b'<meta charset="latin1">\xe9'), "é"),
        (
            lambda: qel.to_html("/f1é", fonts=[None, "Mine"]),
            "<span style=\"font-family:'Mine'\">é</span>",
        ),
        (lambda: qel.Converter(None, "text").convert(r"{\rtf1 я}"), "я"),
        (lambda: qel.Converter(None, "text").convert("\n{\\rtf1 я}"), "я"),
        (lambda: qel.Converter(None, "text").convert("я\n"), "я\n"),
        (lambda: qel.Converter("qel", "html", html_paragraphs=True).convert("a"), "<p>a</p>"),
        (lambda: qel.Converter("rtf", "qel", notes=True).convert(r"{\rtf1 a{\footnote b}}"), "a [b]"),
        (lambda: qel.to_rtf(""), qel.to_rtf("x").replace("x", "")),
    ],
)
def test_results(call, expected):
    assert call() == expected


@pytest.mark.parametrize(
    "call, kind, message",
    [
        (lambda: qel.toggle("a", "bald"), qel.Error, "'bald'"),
        (lambda: qel.to_rtf("a", font="Arial"), qel.Error, "'font' is no option"),
        (lambda: qel.to_rtf("a", colors={1: "red"}), qel.Error, "'red'"),
        (lambda: qel.Converter(None, "qel").convert(b"\x7fELF\0\0"), qel.Error, "binary"),
        (lambda: qel.to_rtf("a", fonts="Arial"), qel.Error, "'fonts' cannot be a string"),
        (lambda: qel.to_rtf("a", font=None), qel.Error, "'font' is no option"),
        (lambda: qel.left("a", -1), qel.Error, "count"),
        (lambda: qel.find("a", "a", -1), qel.Error, "start"),
        (lambda: qel.left("a", 1.5), TypeError, "float"),
        (lambda: qel.to_rtf(1.5), TypeError, "float"),
        (lambda: qel.Converter("qel", "rtf").convert_many(["a", 1.5]), TypeError, "text 1: .*float"),
        (lambda: qel.Converter("qel", "rtf").convert_many("ab"), TypeError, "not one: str"),
        (lambda: qel.Converter("qel", "rtf").convert_many(["a"], -1), ValueError, "threads .* -1"),
        (lambda: qel.plain(None), TypeError, "NoneType"),
        (lambda: qel.plain("a\ud800"), qel.Error, "surrogate pair at 1"),
        (lambda: qel.Converter("qel", "rtf").convert_many(["a"], errors="?"), ValueError, "errors"),
    ],
)
def test_errors(call, kind, message):
    with pytest.raises(kind, match=message):
        call()


@pytest.mark.parametrize("threads", [0, 1, 3])
def test_many_texts_are_converted_as_one_by_one(threads):
    texts = [f"note {i} /b1é😀/b0" if i % 3 else f"/i1{i}" for i in range(5000)]
    texts[17] = None
    for source, target in [("qel", "rtf"), ("qel", "html"), ("qel", "text")]:
        converter = qel.Converter(source, target)
        many = converter.convert_many(texts, threads)
        bytes_out = converter.report.bytes_out
        assert many == [None if text is None else converter.convert(text) for text in texts]
        assert converter.report.bytes_out == 2 * bytes_out
    assert qel.Converter("qel", "rtf").convert_many([]) == []


def test_a_bad_text_among_many_is_named():
    converter = qel.Converter(None, "qel")
    texts = ["a"] * 3000
    texts[1] = None
    texts[2500] = b"\0\1"
    with pytest.raises(qel.Error, match="text 2500: .*binary") as raised:
        converter.convert_many(texts, threads=2)
    assert (raised.value.index, raised.value.status) == (2500, "bad input")
    texts[2000] = "\ud800"
    with pytest.raises(qel.Error, match="text 2000: .*surrogate"):
        converter.convert_many(texts, threads=2)
    converted = converter.convert_many(texts, errors="none")
    assert [i for i, text in enumerate(converted) if text is None] == [1, 2000, 2500]


def test_converters_go_to_other_processes():
    converter = qel.Converter("qel", "html", colors=iter([None, "#010203"]))
    with ProcessPoolExecutor(1, multiprocessing.get_context("spawn")) as pool:
        expected = converter.convert("/y1a")
        assert "#010203" in expected
        assert pool.submit(converter.convert, "/y1a").result() == expected
        assert converter.report.bytes_in == 4
        with pytest.raises(qel.Error, match="'bald'") as raised:
            pool.submit(qel.toggle, "a", "bald").result()
    assert raised.value.status == "bad argument"


def test_other_threads_run_during_a_batch():
    ticks = []
    is_over = threading.Event()

    def tick():
        while not is_over.is_set():
            ticks.append(time.perf_counter())
            time.sleep(0.001)

    ticker = threading.Thread(target=tick)
    ticker.start()
    begin = time.perf_counter()
    qel.Converter("qel", "rtf").convert_many(["/b1word/b0 " * 300_000])
    end = time.perf_counter()
    is_over.set()
    ticker.join()
    assert sum(begin < at < end for at in ticks) > 2


def test_streams_take_and_give_pieces():
    rtf = qel.to_rtf("é /b1bold/b0" * 20000).encode()
    pieces = [rtf[at : at + 1000] for at in range(0, len(rtf), 1000)]
    converter = qel.Converter("rtf", "qel")
    written = list(converter.stream(pieces))
    assert len(written) > 2
    assert b"".join(written).decode() == converter.convert(rtf)
    with pytest.raises(qel.Error):
        list(qel.Converter(None, "qel").stream([b"\0\1"]))


def test_no_memory_is_lost():
    resource = pytest.importorskip("resource")
    text = "/b1bold/b0 word" * 1000

    def peak():
        converter = qel.Converter("qel", "rtf")
        for _ in range(200):
            converter.convert_many([text] * 10)
            qel.plain(text)
            qel.segments(text[:300])
        gc.collect()
        return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss

    assert peak() * 1.1 + 20_000 > peak()


def test_series():
    pandas = pytest.importorskip("pandas")
    series = pandas.Series(["/b1a/b0", None, "bc"], [5, 6, 7], name="note")
    for kind in (object, "string"):
        html = series.astype(kind).qel.to_html(threads=2, colors=["#010203"])
        assert html.tolist() == ["<b>a</b>", None, "bc"]
        assert html.index.tolist() == [5, 6, 7] and html.name == "note"
        lengths = series.astype(kind).qel.length()
        assert lengths.isna().tolist() == [False, True, False] and lengths.sum() == 3
    assert series.qel.toggle("italic", 0, 1).tolist() == ["/b1/i1a/i0/b0", None, "/i1b/i0c"]
    assert series.qel.to_rtf().qel.from_rtf().tolist() == series.tolist()
    assert series.qel.find("c").tolist()[2] == 1


@pytest.mark.parametrize("order", ["import pandas, qel", "import qel, pandas"])
def test_series_whatever_is_imported_first(order):
    pytest.importorskip("pandas")
    program = order + "; print(pandas.Series(['/b1a']).qel.plain()[0])"
    output = subprocess.run([sys.executable, "-c", program], capture_output=True, check=True)
    assert output.stdout.strip() == b"a"


def test_pandas_is_not_imported():
    program = "import sys, qel; sys.exit('pandas' in sys.modules)"
    subprocess.run([sys.executable, "-c", program], check=True)
