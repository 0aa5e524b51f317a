"""The files of the repository, as the checks see them."""

import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCE_FOLDERS = ("backend", "module", "frontend", "apps")


def tracked_files(root=ROOT):
    """Paths relative to root, with slashes: what git tracks or would track, or everything in a tree without git."""
    command = ["git", "-c", "safe.directory=*", "-C", str(root), "ls-files", "-z", "--cached", "--others",
               "--exclude-standard"]
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
    if result.returncode == 0:
        names = result.stdout.decode("utf-8").split("\0")
    else:
        names = (path.relative_to(root).as_posix() for path in root.rglob("*"))
    return sorted(name for name in set(names)
                  if name and not name.startswith(("build/", ".git/")) and (root / name).is_file())


def sources(suffixes=(".h", ".cc"), root=ROOT):
    """The tracked C++ files with one of the suffixes, relative to root."""
    return [name for name in tracked_files(root) if name.endswith(tuple(suffixes))]
