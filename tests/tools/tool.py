"""Loads the scripts of tools/ as modules, and makes small trees for them to look at."""

import contextlib
import functools
import importlib.machinery
import importlib.util
import io
import pathlib
import subprocess
import sys

TOOLS = pathlib.Path(__file__).resolve().parent.parent.parent / "tools"
sys.path.insert(0, str(TOOLS))


def load(name):
    """The script tools/NAME as a module."""
    loader = importlib.machinery.SourceFileLoader(name, str(TOOLS / name))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(name, loader))
    loader.exec_module(module)
    return module


_loaded_once = functools.cache(load)


def run(name, *arguments):
    """Runs the main function of tools/NAME in this process, which spares the start of another one; status and output as of
    a finished process. What programs print that the script starts and does not read is not part of it."""
    script = _loaded_once(name)
    with contextlib.redirect_stdout(io.StringIO()) as output, contextlib.redirect_stderr(io.StringIO()) as errors:
        try:
            status = script.main([str(argument) for argument in arguments])
        except SystemExit as end:  # of the reader of arguments
            status = end.code
    return subprocess.CompletedProcess([name, *arguments], status, output.getvalue(), errors.getvalue())


def write_tree(root, files):
    """files: path below root -> text."""
    for name, text in files.items():
        path = pathlib.Path(root) / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
