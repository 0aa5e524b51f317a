"""Sources the completions in each shell that is installed and asks them for words, and has the manual page read: a test of
ctest.

usage: check_completions.py PROGRAM
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from check_installed import demand, run

# What is typed, and words that are offered, and words that are not.
CASES = [
    ("vexa ", ["run", "import", "export", "completion"], ["--trace"]),
    ("vexa ex", ["export"], ["run"]),
    ("vexa --", ["--version", "--trace"], ["--stop-on-error"]),
    ("vexa run --st", ["--stop-on-error"], ["--version"]),
    ("vexa run --diagnostics ", ["text", "json"], ["run"]),
    ("vexa import --as s", ["svg"], ["json"]),
    ("vexa run --trace a.jsonl --q", ["--quiet"], ["--trace"]),
    ("vexa show --pass", ["--password-file"], []),
]
BASH = """source "$1"
typed=$2
read -ra COMP_WORDS <<< "$typed"
[[ $typed == *' ' ]] && COMP_WORDS+=('')
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
_vexa
printf '%s\\n' "${COMPREPLY[@]}"
complete -p vexa > /dev/null
"""
FISH = """source $argv[1]
complete -C $argv[2]
"""
# The shell itself asks, at a terminal of its own, and what it would insert is listed. The key behind that tells that all was
# shown; what is waited for stands nowhere in what is typed.
ZSH = r"""zmodload zsh/zpty
zpty shell "zsh -f -i"
zpty -w shell "PS1=; autoload -U compinit; compinit -D -u; source '$1'; zstyle ':completion:*' list-colors ''; LISTMAX=0"
zpty -w shell "shown() { zle -I; print ALL'-'SHOWN }; zle -N shown; bindkey '^]' shown"
zpty -w shell "stty -echo; bindkey '^I' list-choices; unsetopt zle_bracketed_paste; print REA'D'Y"
zpty -r -m shell line '*READY*'
zpty -w -n shell "$2"$'\t\x1d'
zpty -r -m shell line '*ALL-SHOWN*'
print -r -- $line
zpty -d shell
"""


def plain_words(text):
    """Without the sequences of the terminal."""
    return re.sub(r"\x1b\[[0-9;?]*[A-Za-z]", " ", text).split()


def ask(shell, script, completions, typed, folder):
    arguments = {"bash": ["bash", "--norc", str(script), completions, typed],
                 "fish": ["fish", "--no-config", str(script), completions, typed],
                 "zsh": ["zsh", "-f", str(script), completions, typed]}[shell]
    result = subprocess.run(arguments, capture_output=True, text=True, errors="replace", cwd=folder, timeout=180, check=False,
                            stdin=subprocess.DEVNULL, env={**os.environ, "HOME": str(folder), "TERM": "dumb"})
    demand(shell == "zsh" or not result.stderr, f"{shell}: {typed!r}: {result.stderr}")
    words = plain_words(result.stdout)
    # That shell shows what was typed as well.
    return [word for word in words if word not in typed.split()] if shell == "zsh" else words


def check_shell(program, shell, folder):
    completions = folder / f"vexa.{shell}"
    completions.write_text(run([program, "completion", shell]), encoding="utf-8")
    run([shell, "-n", str(completions)])
    script = folder / f"ask.{shell}"
    script.write_text({"bash": BASH, "fish": FISH, "zsh": ZSH}[shell], encoding="utf-8")
    for typed, offered, others in CASES:
        words = ask(shell, script, str(completions), typed, folder)
        # A shell inserts the rest where one word is left; zsh then shows nothing else.
        for word in offered if shell != "zsh" or len(offered) > 1 else []:
            demand(word in words, f"{shell}: {typed!r} does not offer {word}: {words}")
        for word in others:
            demand(word not in words, f"{shell}: {typed!r} offers {word}: {words}")


def check_manual(program, folder):
    page = folder / "vexa.1"
    page.write_text(run([program, "manual"]), encoding="utf-8")
    if not shutil.which("man"):
        print("the manual page was not read, because man is not installed")
        return
    result = subprocess.run(["man", "--warnings", "-l", str(page)], capture_output=True, text=True, check=False,
                            env={**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "100"})
    demand(result.returncode == 0 and not result.stderr, f"man: {result.stderr}")
    for text in ("VEXA(1)", "--stop-on-error", "vexa export report.vxv report.html", "EXIT STATUS",
                 "vexa run [OPTIONS] FILE...", "vexa [OPTIONS] [FILE...]", "DOCUMENT FILE [KEYWORD=VALUE...]",
                 "vexa help [OPTIONS] [COMMAND...]"):
        demand(text in result.stdout, f"{text!r} is not in the manual page")


def main(program):
    with tempfile.TemporaryDirectory(prefix="vexa-completions-") as name:
        folder = pathlib.Path(name)
        for shell in ("bash", "zsh", "fish"):
            if shutil.which(shell):
                check_shell(program, shell, folder)
            else:
                print(f"the completions of {shell} were not tried, because it is not installed")
        check_manual(program, folder)


if __name__ == "__main__":
    main(*sys.argv[1:])
