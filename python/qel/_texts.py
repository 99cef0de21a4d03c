"""Functions on texts."""

from __future__ import annotations

from typing import Any, List, NamedTuple, Optional, Tuple

from ._library import (
    encoded,
    error_of,
    ffi,
    json_of,
    lib,
    options_from,
    size_of,
    taken,
    text_of,
)

_STATED = options_from(json_of(lossless=False))


def _options(lossless: bool) -> Any:
    return ffi.NULL if lossless else _STATED


def _span(start: int, count: Optional[int]) -> Tuple[int, int]:
    return size_of("start", start), lib.QEL_ALL if count is None else size_of("count", count)


def _written(function: Any, markup: str, *arguments: Any) -> str:
    data = encoded(markup)
    output = ffi.new("qel_string *")
    error = ffi.new("qel_error *")
    if function(text_of(data), *arguments, output, error) != lib.QEL_OK:
        raise error_of(error)
    return taken(output).decode()


def plain(markup: str, *, lossless: bool = True) -> str:
    r"""The text that a reader sees.

    >>> plain("Hello /b1world/b0/nlof /y1colours/y0")
    'Hello world\nof colours'
    """
    return _written(lib.qel_plain, markup, _options(lossless))


def length(markup: str, *, lossless: bool = True) -> int:
    """How many characters a reader sees.

    >>> length("Hello /b1world/b0")
    11
    """
    data = encoded(markup)
    output = ffi.new("size_t *")
    error = ffi.new("qel_error *")
    if lib.qel_length(text_of(data), _options(lossless), output, error) != lib.QEL_OK:
        raise error_of(error)
    return output[0]


def find(
    markup: str,
    search: str,
    start: int = 0,
    *,
    ignore_case: bool = False,
    lossless: bool = True,
) -> int:
    """Where `search` (markup, too, whose codes do not matter) first occurs from `start` on, or -1.

    >>> find("Hello /b1world/b0", "WORLD", ignore_case=True)
    6
    """
    data, searched = encoded(markup), encoded(search)
    output = ffi.new("size_t *")
    error = ffi.new("qel_error *")
    status = lib.qel_find(
        text_of(data),
        text_of(searched),
        size_of("start", start),
        ignore_case,
        _options(lossless),
        output,
        error,
    )
    if status != lib.QEL_OK:
        raise error_of(error)
    return -1 if output[0] == lib.QEL_NOT_FOUND else output[0]


def left(markup: str, count: int, *, lossless: bool = True) -> str:
    """The first `count` characters.

    >>> left("Hello /b1world/b0", 8)
    'Hello /b1wo/b0'
    """
    return _written(lib.qel_left, markup, size_of("count", count), _options(lossless))


def right(markup: str, count: int, *, lossless: bool = True) -> str:
    """The last `count` characters.

    >>> right("Hello /b1world/b0", 2)
    '/b1ld/b0'
    """
    return _written(lib.qel_right, markup, size_of("count", count), _options(lossless))


def mid(markup: str, start: int, count: Optional[int] = None, *, lossless: bool = True) -> str:
    """`count` characters from the one at `start` on.

    >>> mid("Hello /b1world/b0", 4, 3)
    'o /b1w/b0'
    """
    return _written(lib.qel_mid, markup, *_span(start, count), _options(lossless))


def stuff(
    markup: str, start: int, count: Optional[int], replacement: str, *, lossless: bool = True
) -> str:
    """`replacement`, markup, in place of `count` characters.

    >>> stuff("Hello /b1world/b0", 6, 5, "/i1you/i0")
    'Hello /i1you/i0'
    """
    inserted = encoded(replacement)
    return _written(
        lib.qel_stuff, markup, *_span(start, count), text_of(inserted), _options(lossless)
    )


def change_case(
    markup: str,
    change: str,
    start: int = 0,
    count: Optional[int] = None,
    *,
    lossless: bool = True,
) -> str:
    """`change` is "upper", "lower", "swap", "title", "initial", "first-upper" or "first-lower".

    >>> change_case("Hello /b1World/b0", "swap")
    'hELLO /b1wORLD/b0'
    """
    name = encoded(change)
    return _written(
        lib.qel_change_case, markup, text_of(name), *_span(start, count), _options(lossless)
    )


def upper(markup: str, start: int = 0, count: Optional[int] = None, *, lossless: bool = True) -> str:
    """
    >>> upper("Hello /b1world/b0", 6, 1)
    'Hello /b1World/b0'
    """
    return change_case(markup, "upper", start, count, lossless=lossless)


def lower(markup: str, start: int = 0, count: Optional[int] = None, *, lossless: bool = True) -> str:
    """
    >>> lower("HELLO /b1World/b0")
    'hello /b1world/b0'
    """
    return change_case(markup, "lower", start, count, lossless=lossless)


def title(markup: str, start: int = 0, count: Optional[int] = None, *, lossless: bool = True) -> str:
    """Title case; English articles and prepositions stay small.

    >>> title("the /b1end of/b0 the road")
    'The /b1End of/b0 the Road'
    """
    return change_case(markup, "title", start, count, lossless=lossless)


def toggle(
    markup: str,
    attribute: str,
    start: int = 0,
    count: Optional[int] = None,
    *,
    lossless: bool = True,
) -> str:
    """Sets an attribute, or clears it where the first of the characters has it: "bold", "italic",
    "underline", "strike", "superscript", "subscript", "small-caps", "font1" to "font9", "color1" to
    "color9", "plain".

    >>> toggle("Hello world", "bold", 6)
    'Hello /b1world/b0'
    """
    name = encoded(attribute)
    return _written(
        lib.qel_toggle, markup, text_of(name), *_span(start, count), _options(lossless)
    )


def normalize(markup: str) -> str:
    """The shortest markup of the same text in the same formats.

    >>> normalize("/b1Hello/b0/b1 world/b0/i1/i0")
    '/b1Hello world/b0'
    """
    return _written(lib.qel_normalize, markup, ffi.NULL)


class Segment(NamedTuple):
    """A part of a text in one format."""

    text: str
    line_breaks: int  #: before the text
    bold: bool
    italic: bool
    underline: bool
    strike: bool
    superscript: bool
    subscript: bool
    small_caps: bool
    font: int  #: 0 to 9
    color: int  #: 0 to 9


def _segment(run: Any) -> Segment:
    text = ffi.unpack(run.text.data, run.text.size).decode() if run.text.size else ""
    return Segment(
        text,
        run.line_breaks,
        bool(run.bold),
        bool(run.italic),
        bool(run.underline),
        bool(run.strike),
        bool(run.superscript),
        bool(run.subscript),
        bool(run.small_caps),
        run.font,
        run.color,
    )


def segments(markup: str, *, lossless: bool = True) -> List[Segment]:
    """The text by its formats. Line breaks behind the last one stand before an empty one.

    >>> [(part.text, part.bold) for part in segments("Hello /b1world/b0")]
    [('Hello ', False), ('world', True)]
    """
    data = encoded(markup)
    output = ffi.new("qel_runs **")
    error = ffi.new("qel_error *")
    if lib.qel_runs_of(text_of(data), _options(lossless), output, error) != lib.QEL_OK:
        raise error_of(error)
    try:
        count = lib.qel_runs_count(output[0])
        return [_segment(lib.qel_runs_at(output[0], index)) for index in range(count)]
    finally:
        lib.qel_runs_free(output[0])
