"""Conversions."""

from __future__ import annotations

import os
import re
from array import array
from concurrent.futures import ThreadPoolExecutor
from functools import lru_cache
from itertools import accumulate, chain
from threading import Lock
from typing import Any, Iterable, Iterator, List, NamedTuple, Optional, Sequence, Union

from ._library import Error, Table, encoded_as, error_of, ffi, json_of, lib, options_from, taken, text_of

Text = Union[str, bytes]

#: Texts that one thread converts in one crossing: their bytes stay in the processor's cache.
_PIECE = 512

#: How RTF begins.
_RTF = re.compile(r"[ \t\r\n\ufeff]*\{\\rtf")


class Report(NamedTuple):
    """What the outputs lack of the inputs: how many of each."""

    bytes_in: int = 0
    bytes_out: int = 0
    pictures: int = 0
    objects: int = 0
    cells: int = 0
    rows: int = 0
    notes: int = 0
    headers: int = 0
    links: int = 0
    hidden: int = 0
    deleted: int = 0
    unknown: int = 0
    fonts: int = 0
    colors: int = 0
    sizes: int = 0
    formats: int = 0
    is_broken_off: bool = False  #: the last brace of some RTF never came


class Converter:
    r"""Converts from one format to another, many texts with the same options.

    `source` is "qel" (markup), "rtf", "text" or "html", or None for what a text begins with;
    `target` "qel", "rtf", "rtf-body", "simple-rtf", "text", "segments" (JSON), "html" or "qelv6".
    Fonts and colours are tables of the numbers 0 to 9: lists or dictionaries, colours as "#rrggbb"
    or numbers 0xRRGGBB. `tables` is a text of records as ``qel tables`` prints them. Switches are
    True or False: `notes`, `headers`, `links`, `alternative_texts` keep more of RTF, `normalize`
    gives the shortest markup, `html_document`, `html_paragraphs`, `html_classes` shape HTML,
    `convert_nl_to_space`, `convert_tabs_to_space`, `recognize_crlf`, `recognize_tabs` say what
    becomes of breaks and tabs.

    >>> import qel
    >>> converter = qel.Converter("qel", "html", colors={1: "#ff0000"})
    >>> converter.convert("/y1red/y0")
    '<span style="color:#ff0000">red</span>'
    >>> converter.convert_many(["/b1one/b0", None, "two"], threads=2)
    ['<b>one</b>', None, 'two']
    """

    __module__ = "qel"

    def __init__(
        self,
        source: Optional[str],
        target: str,
        *,
        fonts: Optional[Table] = None,
        colors: Optional[Table] = None,
        font_size: Optional[float] = None,
        tables: Optional[str] = None,
        lossless: bool = True,
        **switches: bool,
    ):
        switches["lossless"] = lossless
        formats = {"from": source or "", "to": target}
        self.__setstate__((source, json_of(fonts, colors, font_size, tables, **formats, **switches)))

    def __getstate__(self) -> Any:
        return self._source, self._json

    def __setstate__(self, state: Any) -> None:
        """A copy, in this process or another, begins a report of its own."""
        self._source, self._json = state
        self._is_utf8 = self._source in ("qel", "text")
        self._options = options_from(self._json)
        self._report = Report()
        self._lock = Lock()

    def _add(self, more: Any) -> None:
        with self._lock:
            self._report = Report(
                *(n + getattr(more, name) for name, n in zip(Report._fields[:-1], self._report)),
                self._report.is_broken_off or bool(more.is_broken_off),
            )

    @property
    def report(self) -> Report:
        """What all conversions so far have dropped.

        >>> converter = Converter("rtf", "qel")
        >>> converter.convert(r"{\\rtf1 a{\\pict 00}b}")
        'ab'
        >>> converter.report.pictures
        1
        """
        return self._report

    def convert(self, text: Text) -> str:
        """The text in the other format. Raises `qel.Error` for binary data of no known format."""
        data = self._encoded(text)
        output = ffi.new("qel_string *")
        report = ffi.new("qel_report *")
        error = ffi.new("qel_error *")
        if lib.qel_convert(text_of(data), self._options, output, report, error) != lib.QEL_OK:
            raise error_of(error)
        self._add(report)
        return taken(output).decode()

    def convert_many(
        self,
        texts: Sequence[Optional[Text]],
        threads: int = 1,
        *,
        errors: str = "raise",
    ) -> List[Optional[str]]:
        """Converts a list on `threads` threads (0: as many as there are processors), while other
        threads of Python run. None stays None. A text that cannot be converted raises an error that
        names its index, or becomes None with ``errors="none"``.
        """
        if errors not in ("raise", "none"):
            raise ValueError(f"errors is neither 'raise' nor 'none': {errors!r}")
        if isinstance(texts, (str, bytes, bytearray, memoryview)):
            raise TypeError(f"texts is a list of texts, not one: {type(texts).__name__}")
        if threads < 0:
            raise ValueError(f"threads is below 0: {threads}")
        threads = threads or os.cpu_count() or 1
        begins = range(0, len(texts), _PIECE)

        def convert_piece(begin: int) -> List[Optional[str]]:
            return self._convert_piece(texts[begin : begin + _PIECE], begin, errors)

        if threads == 1 or len(begins) <= 1:
            return list(chain.from_iterable(map(convert_piece, begins)))
        # While one thread waits for the lock, others convert.
        with ThreadPoolExecutor(threads) as pool:
            return list(chain.from_iterable(pool.map(convert_piece, begins)))

    def stream(self, pieces: Iterable[bytes]) -> Iterator[bytes]:
        """Converts a text of any size that comes in pieces, cut anywhere.

        >>> b"".join(Converter("qel", "html").stream([b"a /", b"b1bold", b"/b0"]))
        b'a <b>bold</b>'
        """
        made = ffi.new("qel_converter **")
        error = ffi.new("qel_error *")
        if lib.qel_converter_new(self._options, made, error) != lib.QEL_OK:
            raise error_of(error)
        converter = ffi.gc(made[0], lib.qel_converter_free)
        for piece in pieces:
            if lib.qel_converter_push(converter, text_of(piece), error) != lib.QEL_OK:
                raise error_of(error)
            yield from _output_of(converter, error)
        report = ffi.new("qel_report *")
        if lib.qel_converter_finish(converter, report, error) != lib.QEL_OK:
            raise error_of(error)
        self._add(report)
        yield from _output_of(converter, error)

    def _encoded(self, text: Text) -> bytes:
        if isinstance(text, bytes):
            return text
        if not isinstance(text, str):
            raise TypeError(f"a text is str or bytes, not {type(text).__name__}")
        if text.isascii() or self._is_utf8:
            return encoded_as(text, "utf-8")
        # Bytes of RTF and HTML would be in the encoding that these name, but for a mark.
        if self._source == "rtf" or (self._source is None and _RTF.match(text)):
            return encoded_as(text, "utf-16")
        return encoded_as(text, "utf-8-sig")

    def _encoded_or_none(self, text: Text, index: int, errors: str) -> Optional[bytes]:
        try:
            return self._encoded(text)
        except Error as error:
            if errors == "none":
                return None
            raise Error(f"text {index}: {error}", error.status, index) from None
        except TypeError as error:
            raise TypeError(f"text {index}: {error}") from None

    def _convert_piece(
        self, texts: Sequence[Optional[Text]], first: int, errors: str
    ) -> List[Optional[str]]:
        encoded = [
            # What most texts are, without a call.
            text.encode()
            if type(text) is str and text.isascii()
            else None
            if text is None
            else self._encoded_or_none(text, index, errors)
            for index, text in enumerate(texts, first)
        ]
        given = [data for data in encoded if data is not None]
        sizes = array("Q", map(len, given))
        batch = ffi.new("py_batch *")
        error = ffi.new("qel_error *")
        try:
            status = lib.py_convert(
                b"".join(given),
                ffi.from_buffer("size_t[]", sizes),
                len(given),
                self._options,
                1,
                batch,
                error,
            )
            if status != lib.QEL_OK:
                raise error_of(error)
            if batch.bad < len(given) and errors == "raise":
                places = [place for place, data in enumerate(encoded) if data is not None]
                raise error_of(batch.error, first + places[batch.bad])
            self._add(batch.report)
            outputs = _split(batch, len(given))
        finally:
            lib.py_release(batch)
        if len(outputs) == len(texts):
            return outputs
        following = iter(outputs)
        return [None if data is None else next(following) for data in encoded]


def _split(batch: Any, count: int) -> List[Optional[str]]:
    """The outputs of a batch, None for those that failed."""
    sizes = ffi.unpack(batch.sizes, count)
    failed = [at for at, size in enumerate(sizes) if size == lib.QEL_ALL] if batch.bad < count else []
    for at in failed:
        sizes[at] = 0
    ends = list(accumulate(sizes))
    data = ffi.buffer(batch.output, ends[-1] if ends else 0)
    outputs: List[Optional[str]]
    try:
        # Most texts are ASCII, in which bytes and characters are the same.
        whole = str(data, "ascii")
        outputs = [whole[begin:end] for begin, end in zip([0, *ends], ends)]
    except UnicodeDecodeError:
        outputs = [str(data[begin:end], "utf-8") for begin, end in zip([0, *ends], ends)]
    for at in failed:
        outputs[at] = None
    return outputs


def _output_of(converter: Any, error: Any) -> Iterator[bytes]:
    output = ffi.new("qel_string *")
    if lib.qel_converter_take(converter, output, error) != lib.QEL_OK:
        raise error_of(error)
    piece = taken(output)
    if piece:
        yield piece


@lru_cache(maxsize=None)
def _usual(source: str, target: str) -> Converter:
    return Converter(source, target)


def _converted(text: Text, source: str, target: str, options: dict) -> str:
    converter = Converter(source, target, **options) if options else _usual(source, target)
    return converter.convert(text)


def to_rtf(markup: Text, **options: Any) -> str:
    r"""Markup as RTF, which is ASCII. Options are those of `Converter`.

    >>> to_rtf("Hello /b1world/b0")[-21:]
    'Hello \\b1 world\\b0 }}'
    """
    return _converted(markup, "qel", "rtf", options)


def from_rtf(rtf: Text, **options: Any) -> str:
    r"""RTF as markup. Bytes are read in the code page that they declare.

    >>> from_rtf(rb"{\rtf1 Hello {\b world}}")
    'Hello /b1world/b0'
    """
    return _converted(rtf, "rtf", "qel", options)


def to_html(markup: Text, **options: Any) -> str:
    """Markup as HTML.

    >>> to_html("a < /b1b/b0")
    'a &lt; <b>b</b>'
    """
    return _converted(markup, "qel", "html", options)


def from_html(html: Text, **options: Any) -> str:
    """HTML as markup. Bytes are read in the encoding that they name.

    >>> from_html("<p>Hello <b>world</b>")
    'Hello /b1world/b0'
    """
    return _converted(html, "html", "qel", options)
