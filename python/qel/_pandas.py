"""``series.qel``: the functions of the package on each text of a series of pandas."""

from __future__ import annotations

from typing import Any, Callable, Optional

import pandas

from . import _texts
from ._conversions import Converter


@pandas.api.extensions.register_series_accessor("qel")
class QelAccessor:
    """Conversions and functions on texts, of the same names as in the package. Missing texts stay
    missing. The index and the name of the series stay as well.

    >>> import pandas, qel
    >>> pandas.Series(["/b1one/b0", None]).qel.to_html().tolist()
    ['<b>one</b>', None]
    """

    def __init__(self, series: pandas.Series):
        self._series = series

    def convert(
        self, source: Optional[str], target: str, threads: int = 1, **options: Any
    ) -> pandas.Series:
        """See `qel.Converter`."""
        texts = self._series.astype(object).where(self._series.notna(), None).tolist()
        return self._like(Converter(source, target, **options).convert_many(texts, threads))

    def to_rtf(self, threads: int = 1, **options: Any) -> pandas.Series:
        return self.convert("qel", "rtf", threads, **options)

    def from_rtf(self, threads: int = 1, **options: Any) -> pandas.Series:
        return self.convert("rtf", "qel", threads, **options)

    def to_html(self, threads: int = 1, **options: Any) -> pandas.Series:
        return self.convert("qel", "html", threads, **options)

    def from_html(self, threads: int = 1, **options: Any) -> pandas.Series:
        return self.convert("html", "qel", threads, **options)

    def length(self, *, lossless: bool = True) -> pandas.Series:
        return self._mapped(_texts.length, lossless=lossless).astype("Int64")

    def find(self, search: str, start: int = 0, **options: bool) -> pandas.Series:
        return self._mapped(_texts.find, search, start, **options).astype("Int64")

    def _mapped(self, function: Callable[..., Any], *arguments: Any, **options: Any) -> pandas.Series:
        return self._like(
            [
                None if missing else function(text, *arguments, **options)
                for text, missing in zip(self._series, self._series.isna())
            ]
        )

    def _like(self, values: list) -> pandas.Series:
        return pandas.Series(values, self._series.index, object, self._series.name)


def _add(name: str) -> None:
    function = getattr(_texts, name)

    def method(self: QelAccessor, *arguments: Any, **options: Any) -> pandas.Series:
        return self._mapped(function, *arguments, **options)

    method.__name__ = name
    method.__doc__ = f"See `qel.{name}`."
    setattr(QelAccessor, name, method)


for _name in (
    "change_case",
    "left",
    "lower",
    "mid",
    "normalize",
    "plain",
    "right",
    "segments",
    "stuff",
    "title",
    "toggle",
    "upper",
):
    _add(_name)
