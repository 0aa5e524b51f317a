"""Remembers which files passed a check, so that a warm run repeats only what changed.

A result belongs to the content of the checked file, of every project file that it includes, directly or not, and to
a text that stands for the tool and its settings. Only passes are kept: a failure is always shown anew.
"""

import hashlib
import json
import pathlib


class ResultCache:
    """One folder of results; the entry of a name is replaced when its inputs change."""

    def __init__(self, folder, settings):
        """folder: where entries stand, made when missing; settings: every other thing that a result depends on."""
        self.folder = pathlib.Path(folder)
        self.folder.mkdir(parents=True, exist_ok=True)
        self.settings = settings
        self.hashes = {}

    def passed(self, name, command=""):
        """True when name passed before, with this command, and nothing that the result depends on has changed since."""
        try:
            entry = json.loads(self._path(name).read_text(encoding="utf-8"))
        except (OSError, ValueError):
            return False
        return entry["key"] == self._key(entry["inputs"], command)

    def remember(self, name, inputs, command=""):
        """Keeps a pass of name, which read the files in inputs."""
        entry = {"inputs": sorted(inputs), "key": self._key(inputs, command)}
        self._path(name).write_text(json.dumps(entry), encoding="utf-8")

    def _path(self, name):
        return self.folder / (name.replace("/", "__") + ".json")

    def _key(self, inputs, command):
        lines = [self.settings, command] + [f"{path} {self._hash(path)}" for path in sorted(inputs)]
        return hashlib.sha256("\n".join(lines).encode("utf-8")).hexdigest()

    def _hash(self, path):
        if path not in self.hashes:
            try:
                self.hashes[path] = hashlib.sha256(pathlib.Path(path).read_bytes()).hexdigest()
            except OSError:
                self.hashes[path] = "missing"
        return self.hashes[path]


def make_dependencies(text):
    """The files named in the rule that a compiler writes for make (-MM)."""
    after_target = text.replace("\\\n", " ").split(":", 1)[1]
    return [name for name in after_target.split() if name]
