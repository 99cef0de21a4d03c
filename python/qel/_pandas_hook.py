"""Registers ``series.qel`` once pandas is there, without importing it: that takes longer than all
else."""

from __future__ import annotations

import importlib.abc
import importlib.util
import sys
from typing import Any


class _Finder(importlib.abc.MetaPathFinder):
    """Finds pandas as others do, and registers the accessor when it has been imported."""

    def find_spec(self, name: str, path: Any, target: Any = None) -> Any:
        if name != "pandas":
            return None
        sys.meta_path.remove(self)
        spec = importlib.util.find_spec(name)
        if spec is None or spec.loader is None:
            return spec
        execute = spec.loader.exec_module

        def execute_and_register(module: Any) -> None:
            execute(module)
            from . import _pandas  # noqa: F401

        spec.loader.exec_module = execute_and_register  # type: ignore[method-assign]
        return spec


def register_with_pandas() -> None:
    if "pandas" in sys.modules:
        from . import _pandas  # noqa: F401
    else:
        sys.meta_path.insert(0, _Finder())
