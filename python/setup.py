import os

from setuptools import setup

setup(
    version=os.environ.get("QEL_VERSION", "0"),
    cffi_modules=["build_qel.py:builder"],
    options={"bdist_wheel": {"py_limited_api": "cp39"}},
)
