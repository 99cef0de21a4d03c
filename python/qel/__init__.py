"""Formatted text as slash-code markup, and as RTF, HTML and plain text.

>>> import qel
>>> qel.to_html("Hello /b1world/b0")
'Hello <b>world</b>'
>>> qel.from_rtf(qel.to_rtf("Hello /b1world/b0"))
'Hello /b1world/b0'
>>> qel.plain("Hello /b1world/b0")
'Hello world'

Texts are markup unless a name says otherwise. Positions count the characters that a reader sees,
from 0, as Python counts characters; a line break is one character. A count of None means all the
rest. Broken markup, RTF and HTML are text, not errors.

With ``lossless=False`` the letter of the markup's rules counts, with what it loses: line breaks are
no characters then, for example.
"""

from ._conversions import (
    Converter,
    Report,
    from_html,
    from_rtf,
    to_html,
    to_rtf,
)
from ._library import Error, version
from ._pandas_hook import register_with_pandas
from ._texts import (
    Segment,
    change_case,
    find,
    left,
    length,
    lower,
    mid,
    normalize,
    plain,
    right,
    segments,
    stuff,
    title,
    toggle,
    upper,
)

__version__ = version
__all__ = [
    "Converter",
    "Error",
    "Report",
    "Segment",
    "change_case",
    "find",
    "from_html",
    "from_rtf",
    "left",
    "length",
    "lower",
    "mid",
    "normalize",
    "plain",
    "right",
    "segments",
    "stuff",
    "title",
    "to_html",
    "to_rtf",
    "toggle",
    "upper",
]

register_with_pandas()
