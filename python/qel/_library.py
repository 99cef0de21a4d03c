"""What all modules need of the C interface."""

from __future__ import annotations

import json
import operator
from typing import Any, Mapping, Optional, Sequence, Union

from ._qel import ffi, lib

version: str = ffi.string(lib.qel_version()).decode()

Table = Union[Mapping[int, Any], Sequence[Any]]

_STATUSES = {
    lib.QEL_NO_MEMORY: "no memory",
    lib.QEL_BAD_ARGUMENT: "bad argument",
    lib.QEL_BAD_INPUT: "bad input",
    lib.QEL_STOPPED: "stopped",
}


class Error(Exception):
    """What could not be done: an option or a name that does not exist, input that is no text.

    >>> import qel
    >>> qel.toggle("text", "bald")
    Traceback (most recent call last):
    qel.Error: 'bald' is no attribute
    """

    __module__ = "qel"

    #: "bad argument", "bad input", "no memory", "stopped" or "failed"
    status: str
    #: which text of a list could not be converted; None for a single one
    index: Optional[int]

    def __init__(self, message: str, status: str = "failed", index: Optional[int] = None):
        super().__init__(message)
        self.status = status
        self.index = index


def error_of(error: Any, index: Optional[int] = None) -> Error:
    message = ffi.string(error.message).decode("utf-8", "replace")
    if index is not None:
        message = f"text {index}: {message}"
    return Error(message, _STATUSES.get(error.status, "failed"), index)


def encoded(text: str) -> bytes:
    if not isinstance(text, str):
        raise TypeError(f"a text is str, not {type(text).__name__}")
    return encoded_as(text, "utf-8")


def encoded_as(text: str, encoding: str) -> bytes:
    try:
        return text.encode(encoding)
    except UnicodeEncodeError as error:
        message = f"half of a surrogate pair at {error.start} is no character"
        raise Error(message, "bad input") from None


def size_of(name: str, value: int) -> int:
    """A position or a count as an argument."""
    value = operator.index(value)
    if value < 0:
        raise Error(f"the {name} is less than 0", "bad argument")
    return min(value, lib.QEL_ALL)


def text_of(data: bytes) -> Any:
    """The bytes as an argument; they have to outlive the call."""
    buffer = ffi.from_buffer(data)
    return ffi.new("qel_text *", (buffer, len(buffer)))[0]


def taken(string: Any) -> bytes:
    """The bytes of a string of the library, which is released."""
    data: bytes = ffi.unpack(string.data, string.size) if string.size else b""
    lib.qel_string_free(string[0])
    return data


def _items(table: Table) -> Any:
    if isinstance(table, str):
        return table  # which the library refuses; its letters are no items
    pairs = table.items() if isinstance(table, Mapping) else enumerate(table)
    return {str(index): item for index, item in pairs if item is not None}


def json_of(
    fonts: Optional[Table] = None,
    colors: Optional[Table] = None,
    font_size: Optional[float] = None,
    tables: Optional[str] = None,
    **others: Any,
) -> bytes:
    """Options as the library reads them; the names of switches have underscores for hyphens."""
    given = {
        "fonts": None if fonts is None else _items(fonts),
        "colors": None if colors is None else _items(colors),
        "fontSize": font_size,
        "tables": tables,
    }
    given = {name: value for name, value in given.items() if value is not None}
    given.update((name.replace("_", "-"), value) for name, value in others.items())
    return json.dumps(given).encode()


def options_from(data: bytes) -> Any:
    """Options of the library."""
    options = ffi.gc(lib.qel_options_new(), lib.qel_options_free)
    if options == ffi.NULL:
        raise MemoryError
    error = ffi.new("qel_error *")
    if lib.qel_options_set_json(options, text_of(data), error) != lib.QEL_OK:
        raise error_of(error)
    return options
