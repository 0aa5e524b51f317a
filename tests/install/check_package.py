"""Makes the Debian package, unpacks it into a folder, and tries what is in it: a test of ctest. What the system's package tools
have to say is heard where they are installed.

usage: check_package.py SOURCES BUILD VERSION
"""

import gzip
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from check_installed import EXPECTED, SYNTAX, demand, run

PLACES = ["usr/bin/vexa", "usr/lib/vexa-output/bin/vexa", "usr/lib/vexa-output/lib/vexaoutput.so",
          "usr/lib/vexa-output/lang/de/outnew.xlf", "usr/lib/vexa-output/lang/statistic-roles.xml",
          "usr/lib/vexa-output/Looks/report.tlk", "usr/share/man/man1/vexa.1.gz",
          "usr/share/bash-completion/completions/vexa", "usr/share/zsh/vendor-completions/_vexa",
          "usr/share/fish/vendor_completions.d/vexa.fish", "usr/share/doc/vexa-output/README.md",
          "usr/share/doc/vexa-output/bindings/python/vexa_results.py", "usr/share/doc/vexa-output/bindings/r/vexa.R",
          "usr/share/doc/vexa-output/copyright", "usr/share/doc/vexa-output/changelog.gz"]


def check_unpacked(root, version):
    for place in PLACES:
        demand((root / place).is_file(), f"{place} is not in the package")
    program = root / "usr" / "bin" / "vexa"
    demand(os.readlink(program) == "../lib/vexa-output/bin/vexa", "the link to the program leads elsewhere")
    demand(run([program, "--version"]).strip() == f"vexa {version}", "--version is another one")
    work = root / "work"
    work.mkdir()
    (work / "case.vxs").write_text(SYNTAX, encoding="utf-8")
    printed = run([program, "run", "--language", "de", "case.vxs"], cwd=work)
    for text in EXPECTED:
        demand(text in printed, f"{text!r} is not in what was printed:\n{printed}")
    page = gzip.decompress((root / "usr/share/man/man1/vexa.1.gz").read_bytes()).decode()
    demand(f"vexa {version}" in page and ".SH OPTIONS" in page, "the manual page is another one")


def check_control(package, version):
    fields = run(["dpkg-deb", "--field", package])
    for text in ("Package: vexa-output", f"Version: {version}", "Depends: libc6"):
        demand(text in fields, f"{text!r} is not in\n{fields}")
    files = run(["dpkg-deb", "--contents", package])
    for line in files.splitlines():
        rights, owner = line.split()[:2]
        demand(owner == "root/root", f"belongs to somebody: {line}")
        demand(rights[5] != "w" and rights[8] != "w" or rights[0] == "l", f"others may write: {line}")


def ask_lintian(package):
    if not shutil.which("lintian") or os.environ.get("VEXA_QUICK"):
        print("lintian was not asked")
        return
    # As nobody: it refuses to unpack as the superuser without a warning.
    result = subprocess.run(["lintian", "--fail-on", "error", "--allow-root", package], capture_output=True, text=True, check=False)
    demand(result.returncode == 0, f"lintian:\n{result.stdout}{result.stderr}")


def main(sources, build, version):
    if not shutil.which("dpkg-deb") or not shutil.which("dpkg-shlibdeps"):
        print("no package was made, because dpkg-dev is not installed")
        return
    with tempfile.TemporaryDirectory(prefix="vexa-package-") as name:
        folder = pathlib.Path(name)
        package = run([f"{sources}/tools/deb", str(folder), build]).splitlines()[-1]
        check_control(package, version)
        run(["dpkg-deb", "--extract", package, str(folder / "root")])
        check_unpacked(folder / "root", version)
        again = folder / "again"
        again.mkdir()
        second = run([f"{sources}/tools/deb", str(again), build]).splitlines()[-1]
        same = pathlib.Path(package).read_bytes() == pathlib.Path(second).read_bytes()
        demand(same, "the same build gives another package")
        ask_lintian(package)


if __name__ == "__main__":
    main(*sys.argv[1:])
