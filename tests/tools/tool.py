"""Loads the scripts of tools/ as modules, and makes small trees for them to look at."""

import importlib.machinery
import importlib.util
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


def run(name, *arguments, **options):
    """Runs tools/NAME; the finished process with its output as text."""
    return subprocess.run([sys.executable, str(TOOLS / name), *map(str, arguments)], capture_output=True, text=True,
                          check=False, **options)


def write_tree(root, files):
    """files: path below root -> text."""
    for name, text in files.items():
        path = pathlib.Path(root) / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
