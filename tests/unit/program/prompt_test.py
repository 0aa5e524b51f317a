#!/usr/bin/env python3
"""The program at a terminal and behind pipes: what a user types, and what ends without a run ending with it.

Usage: prompt_test.py PROGRAM
"""

import fcntl
import json
import os
import pty
import select
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
SECONDS = 120  # of a machine that is busy with much else


def wait_for(happened):
    end = time.monotonic() + SECONDS
    while not happened():
        if time.monotonic() > end:
            raise AssertionError("what was waited for did not happen")
        time.sleep(0.01)


def is_at_rest(process):
    """Whether a process waits for something, such as keys."""
    with open(f"/proc/{process}/stat", encoding="utf-8", errors="replace") as file:
        return file.read().rpartition(")")[2].split()[0] == "S"


def waiting_keys(terminal):
    """How many bytes were typed at a terminal that nobody has read."""
    return struct.unpack("i", fcntl.ioctl(terminal, termios.FIONREAD, bytes(4)))[0]


class Typed:
    """A session at a terminal."""

    def __init__(self, folder, *arguments, locale="C.UTF-8", program=PROGRAM):
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(folder)
            os.environ.update(LC_ALL=locale, TERM="xterm", INPUTRC="/dev/null", HOME=folder, PS1="$ ")
            os.execvp(program, [program, *(arguments or ("--language", "en"))])
        self.shown = ""
        if program == PROGRAM:
            self.prompted()

    def expect(self, text):
        """Waits for `text` behind what was waited for before, and gives what stands before it."""
        end = time.monotonic() + SECONDS
        while text not in self.shown:
            ready = select.select([self.terminal], [], [], max(0, end - time.monotonic()))[0]
            if not ready:
                raise AssertionError(f"{text!r} was not shown, but {self.shown!r}")
            try:
                piece = os.read(self.terminal, 65536)
            except OSError:
                piece = b""
            if not piece:
                raise AssertionError(f"the program ended before {text!r}: {self.shown!r}")
            self.shown += piece.decode("utf-8", "replace")
        before, _, self.shown = self.shown.partition(text)
        return before

    def prompted(self):
        """Waits for the prompt, and until the editor takes keys: one that comes before may be lost."""
        self.expect("vexa> ")
        self.take_keys()

    def asked(self, names):
        """Waits for the question whether to leave, and until it takes an answer."""
        self.expect(f"not saved: {names}. Leave without saving? [y/N]")
        self.asking()

    def asking(self):
        self.expect("vexa? ")
        self.take_keys()

    def take_keys(self):
        """A signal that comes while the editor only just changes the terminal would find it unprepared: it has to rest."""
        wait_for(lambda: not termios.tcgetattr(self.terminal)[3] & termios.ICANON and is_at_rest(self.process))

    def waits_for_keys(self):
        """Waits until the program at the terminal has nothing left to do. The editor's library draws the line anew when the
        program goes on after a stop, but not where it was drawing it when the stop came."""
        wait_for(lambda: self.state() == "S")

    def state(self):
        with open(f"/proc/{os.tcgetpgrp(self.terminal)}/stat", encoding="utf-8") as file:
            return file.read().rpartition(") ")[2][0]

    def type(self, text):
        os.write(self.terminal, text.encode())

    def status(self):
        end = time.monotonic() + SECONDS
        while time.monotonic() < end:
            done, status = os.waitpid(self.process, os.WNOHANG)
            if done:
                os.close(self.terminal)
                return os.waitstatus_to_exitcode(status)
            if select.select([self.terminal], [], [], 0.05)[0]:
                try:
                    os.read(self.terminal, 65536)
                except OSError:
                    pass
        os.kill(self.process, signal.SIGKILL)
        raise AssertionError("the program did not end")


class PromptTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def write(self, name, text):
        with open(os.path.join(self.folder, name), "w", encoding="utf-8") as file:
            file.write(text)

    def test_an_interrupt_drops_the_line_and_keeps_the_documents(self):
        session = Typed(self.folder)
        session.type("OUTPUT NEW NAME=kept.\r")
        session.prompted()
        session.type("OUTPUT COMMENT TEXT='not saved'.\r")
        session.prompted()
        session.type("ECHO 'dropped")
        session.expect("dropped")
        session.type("\x03")
        session.prompted()
        session.type("OUTPUT DISPLAY.\r")
        session.expect("kept [a]")
        session.prompted()
        session.type("quit\r")
        session.asked("kept")
        session.type("y\r")
        self.assertEqual(session.status(), 0)

    def test_a_stop_that_nothing_could_end_drops_the_line_alone(self):
        """Ctrl-Z in a terminal without a shell, where the system stops nothing."""
        session = self.changed()
        session.type("OUTPUT CLOSE")
        session.type("\x1a")
        session.prompted()
        session.type("OUTPUT\r")
        session.expect("....> ")
        session.take_keys()
        session.type("\x1a")
        session.prompted()
        session.type("exit\r")
        session.asked("mine")
        session.type("\x1a")
        session.prompted()
        session.type("\x04")
        session.asked("mine")
        session.type("y\r")
        self.assertEqual(session.status(), 0)

    def test_a_stop_under_a_shell_keeps_the_line(self):
        shell = Typed(self.folder, "--norc", "--noprofile", "--noediting", "-i", program="bash")
        shell.expect("$ ")
        shell.type(f"'{PROGRAM}' --language en\r")
        shell.prompted()
        shell.type("ECHO 'ke")
        shell.expect("ke")
        shell.waits_for_keys()
        shell.type("\x1a")
        shell.expect("Stopped")
        shell.expect("$ ")
        shell.type("fg\r")
        shell.expect("vexa> ECHO 'ke")
        shell.take_keys()
        shell.type("pt'.\r")
        shell.expect("\nkept")
        shell.prompted()
        shell.type("exit\r")
        shell.expect("$ ")
        shell.type("exit\r")
        self.assertEqual(shell.status(), 0)

    def test_a_signal_that_comes_while_the_line_is_shown_is_not_lost(self):
        """The editor shows the key that came before and does not wait for one."""
        for key in "\x1a", "\x03":
            session = self.changed()
            terminal = os.open(os.readlink(f"/proc/{session.process}/fd/0"), os.O_RDWR | os.O_NOCTTY)
            termios.tcflow(terminal, termios.TCOOFF)
            session.type("O")
            wait_for(lambda: waiting_keys(terminal) == 0)
            session.type(key)
            wait_for(lambda: termios.tcgetattr(terminal)[3] & termios.ICANON)
            termios.tcflow(terminal, termios.TCOON)
            os.close(terminal)
            session.prompted()
            session.type("exit\r")
            session.asked("mine")
            session.type("y\r")
            self.assertEqual(session.status(), 0)

    def test_a_changed_window_leaves_the_end_of_the_input_alone(self):
        session = Typed(self.folder)
        fcntl.ioctl(session.terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 30, 90, 0, 0))
        session.type("\x04")
        self.assertEqual(session.status(), 0)

    def test_an_interrupt_stops_an_export_and_leaves_the_old_file(self):
        chart = "<svg xmlns='http://www.w3.org/2000/svg' width='600' height='400'><circle cx='300' cy='200' r='%d'/></svg>"
        items = {"items": [{"type": "chart", "svg": chart % (i % 200)} for i in range(600)]}
        self.write("charts.json", json.dumps(items))
        self.write("a.htm", "old")
        subprocess.run([PROGRAM, "import", "charts.vxv", "charts.json"], cwd=self.folder, stdout=subprocess.DEVNULL, timeout=SECONDS,
                       check=True)
        session = Typed(self.folder)
        session.type("OUTPUT OPEN FILE='charts.vxv' NAME=charts.\r")
        session.prompted()
        session.type("OUTPUT EXPORT /HTML DOCUMENTFILE='a.htm' IMAGEFORMAT=PNG.\r")
        # Progress is shown of what takes longer than a moment, which passes here, however fast the machine is.
        wait_for(lambda: sum(name.startswith(".vexa-") for name in os.listdir(self.folder)) >= 5)
        os.kill(session.process, signal.SIGSTOP)
        time.sleep(0.7)
        os.kill(session.process, signal.SIGCONT)
        session.expect("Exporting: item")
        session.type("\x03")
        session.expect("The export was stopped before its end. Nothing was replaced.")
        session.prompted()
        session.type("OUTPUT DISPLAY.\r")
        session.expect("charts [a]")
        session.prompted()
        session.type("exit\r")
        self.assertEqual(session.status(), 1, "that of the command")
        self.assertEqual(sorted(os.listdir(self.folder)), ["a.htm", "charts.json", "charts.vxv"])
        with open(os.path.join(self.folder, "a.htm"), encoding="utf-8") as file:
            self.assertEqual(file.read(), "old")

    def test_an_interrupt_stops_inserted_files(self):
        self.write("b.vxs", "ECHO 'again'.\n" * 2000)
        self.write("a.vxs", "INSERT FILE='b.vxs'.\n" * 2000)
        session = Typed(self.folder)
        session.type("INSERT FILE='a.vxs'.\r")
        session.expect("again\r\nagain")
        session.type("\x03")
        session.expect("Interrupted; the commands that were left did not run.")
        session.prompted()
        session.type("ECHO 'alive'.\r")
        session.expect("\nalive")
        session.prompted()
        session.type("\x04")
        self.assertEqual(session.status(), 0)

    def changed(self, *arguments, name="mine"):
        """A session with a document that was changed and not saved."""
        session = Typed(self.folder, *arguments)
        session.type(f"OUTPUT NEW NAME={name}.\r")
        session.prompted()
        session.type("OUTPUT COMMENT TEXT='not saved'.\r")
        session.prompted()
        return session

    def test_the_end_of_input_asks_and_a_second_one_leaves(self):
        session = self.changed()
        session.type("\x04")
        session.asked("mine")
        session.type("\x04")
        self.assertEqual(session.status(), 0)

    def test_only_yes_leaves(self):
        session = self.changed()
        for answer in ("n", "", "no", "exit", "yess", "\x03"):
            session.type("exit\r")
            session.asked("mine")
            session.type(answer if answer == "\x03" else answer + "\r")
            session.prompted()
        session.type("ECHO 'alive'.\r")
        session.expect("\nalive")
        session.prompted()
        session.type("OUTPUT NEW NAME=second.\r")
        session.prompted()
        session.type("OUTPUT COMMENT TEXT='more'.\r")
        session.prompted()
        session.type("quit\r")
        session.asked("mine, second")
        session.type(" YES \r")
        self.assertEqual(session.status(), 0)

    def test_the_answer_is_that_of_the_language(self):
        session = self.changed("--language", "de", name="mein")
        session.type("exit\r")
        session.expect("mein")
        session.expect("[j/N]")
        session.asking()
        session.type("Ja\r")
        self.assertEqual(session.status(), 0)

    def test_nothing_is_asked_where_nothing_is_lost(self):
        session = Typed(self.folder)
        session.type("OUTPUT NEW NAME=empty.\r")
        session.prompted()
        session.type("OUTPUT NAME renamed.\r")
        session.prompted()
        session.type("OUTPUT NEW NAME=saved.\r")
        session.prompted()
        session.type("OUTPUT COMMENT TEXT='kept'.\r")
        session.prompted()
        session.type("OUTPUT SAVE NAME=saved OUTFILE='saved.vxv'.\r")
        session.prompted()
        session.type("exit\r")
        self.assertEqual(session.status(), 0)

    def test_a_signal_at_the_prompt_gives_the_terminal_back(self):
        for numbers in ((signal.SIGTERM,), (signal.SIGHUP,), (signal.SIGHUP, signal.SIGTERM), (signal.SIGTERM, signal.SIGTERM)):
            session = Typed(self.folder)
            held = os.dup(session.terminal)
            for number in numbers:
                os.kill(session.process, number)
            self.assertIn(session.status(), [-number for number in numbers])
            self.assertTrue(termios.tcgetattr(held)[3] & termios.ECHO, numbers)
            self.assertTrue(termios.tcgetattr(held)[3] & termios.ICANON, numbers)
            os.close(held)

    def test_a_question_mark_is_help(self):
        session = Typed(self.folder)
        session.type("? OUTPUT SAVE\r")
        session.expect("saves an output document to a file")
        session.prompted()
        session.type("exit\r")
        self.assertEqual(session.status(), 0)

    def test_completion_behind_letters_of_several_bytes(self):
        session = Typed(self.folder)
        session.type("OUTPUT NEW NAME=Äöüß MINIM\t")
        session.expect("IZED")
        session.type("=YES.\r")
        session.prompted()
        session.type("OUTPUT DISPLAY.\r")
        session.expect("Äöüß [a]")
        session.prompted()
        session.type("exit\r")
        self.assertEqual(session.status(), 0)

    def test_completion_of_files_and_of_help(self):
        self.write("inserted.vxs", "ECHO 'from the file'.\n")
        session = Typed(self.folder)
        session.type("INSERT FILE='inser\t")
        session.expect("ted.vxs")
        session.type("\x15help OUTPUT SA\t\r")
        session.expect("saves an output document to a file")
        session.prompted()
        session.type("exit\r")
        self.assertEqual(session.status(), 0)

    def test_completion_behind_wide_and_combining_letters_and_emoji(self):
        session = Typed(self.folder)
        for name in ("漢字", "e\u0301a\u0308", "😀👩\u200d👧", "한글"):
            session.type(f"OUTPUT NEW NAME={name} MINIM\t")
            session.expect("IZED")
            session.type("=YES.\r")
            session.prompted()
        session.type("OUTPUT DISPLAY.\r")
        shown = session.expect("[a]")
        for name in ("漢字", "e\u0301a\u0308", "😀👩\u200d👧", "한글"):
            self.assertIn(name, shown)
        session.prompted()
        session.type("exit\rexit\r")
        self.assertEqual(session.status(), 0)

    def test_completion_of_files_with_blanks_and_quotes(self):
        os.mkdir(os.path.join(self.folder, "my files"))
        self.write("my files/it's mine.vxs", "ECHO 'the first'.\n")
        self.write("Übersicht 漢.vxs", "ECHO 'the second'.\n")
        session = Typed(self.folder)
        session.type("INSERT FILE='my f\t")
        session.expect("iles/")
        session.type("it\t")
        session.expect("''s mine.vxs'")
        session.type(".\r")
        session.expect("\nthe first")
        session.prompted()
        session.type('INSERT FILE="my files/it\t')
        session.expect("'s mine.vxs\"")
        session.type(".\r")
        session.expect("\nthe first")
        session.prompted()
        session.type("INSERT FILE='Über\t")
        session.expect("sicht 漢.vxs'")
        session.type(".\r")
        session.expect("\nthe second")
        session.prompted()
        session.type("CD 'my files'.\r")
        session.prompted()
        session.type("INSERT FILE='it\t")
        session.expect("''s mine.vxs'")
        session.type(".\r")
        session.expect("\nthe first")
        session.prompted()
        session.type("exit\r")
        self.assertEqual(session.status(), 0)

    def test_letters_beyond_ascii_whatever_the_locale(self):
        """Also in the locale C, and in one that the system does not have."""
        self.write("größe.vxs", "ECHO 'from the file'.\n")
        for locale in ("C", "POSIX", "xx_XX.UTF-8"):
            session = Typed(self.folder, locale=locale)
            session.type("OUTPUT NEW NAME=Äöü MINIM\t")
            session.expect("IZED")
            session.type("=YES.\r")
            session.prompted()
            session.type("INSERT FILE='gr\t")
            session.expect("öße.vxs'")
            session.type(".\r")
            session.expect("\nfrom the file")
            session.prompted()
            session.type("OUTPUT DISPLAY.\r")
            session.expect("Äöü [a]")
            session.prompted()
            session.type("exit\r")
            session.asked("Äöü")
            session.type("y\r")
            self.assertEqual(session.status(), 0)

    def test_names_of_files_do_not_steer_the_terminal(self):
        for name in (b"x\x1b[31m1.vxs", b"x\n2.vxs", b"x\xff3.vxs"):
            try:
                open(os.path.join(os.fsencode(self.folder), name), "wb").close()
            except OSError:
                self.skipTest("the file system takes no such names")
        self.write("x4.vxs", "ECHO 'the only one'.\n")
        session = Typed(self.folder)
        session.type("INSERT FILE='x\t")
        session.expect("4.vxs'")
        session.type(".\r")
        session.expect("\nthe only one")
        session.prompted()
        session.type("exit\r")
        self.assertEqual(session.status(), 0)

    def test_completion_of_what_help_shows_of_a_command(self):
        session = Typed(self.folder)
        session.type("help OUTPUT SAVE PASSP\t")
        session.expect("ROTECT")
        session.type("\r")
        session.expect("PASSWORD")
        session.prompted()
        session.type("exit\r")
        self.assertEqual(session.status(), 0)

    def test_a_command_of_several_lines_comes_back_as_one(self):
        session = Typed(self.folder)
        session.type("ECHO\r")
        session.expect("....> ")
        session.type("'twice'.\r")
        session.expect("\ntwice")
        session.prompted()
        session.type("\x10\r")
        session.expect("\ntwice")
        session.prompted()
        session.type("exit\r")
        self.assertEqual(session.status(), 0)


class PipeTest(unittest.TestCase):
    setUp = PromptTest.setUp
    write = PromptTest.write

    def run_program(self, *words, **streams):
        return subprocess.run([PROGRAM, *words], cwd=self.folder, stderr=subprocess.PIPE, text=True, timeout=SECONDS,
                              check=False, **streams)

    def test_a_reader_that_goes_ends_no_run(self):
        self.write("a.vxs", "ECHO 'much'.\n" * 50000 + "OUTPUT NEW NAME=a.\nOUTPUT SAVE NAME=a OUTFILE='a.vxv'.\n")
        reading, writing = os.pipe()
        os.close(reading)
        done = self.run_program("run", "a.vxs", stdout=writing)
        os.close(writing)
        self.assertEqual(done.returncode, 2)
        self.assertIn("Standard output could not be written", done.stderr)
        self.assertTrue(os.path.exists(os.path.join(self.folder, "a.vxv")))

    def without_output(self, words):
        """Exit statuses where standard output is full, closed, and a pipe whose reader has gone."""
        made = {"run": ("made.vxv", "made.txt"), "import": ("made.vxv",), "export": ("made.txt",)}.get(words[0], ())
        statuses = []
        reading, gone = os.pipe()
        os.close(reading)
        with open("/dev/full", "wb") as full:
            for shell, out in (('exec "$@"', full), ('exec "$@" >&-', None), ('exec "$@"', gone)):
                done = subprocess.run(["sh", "-c", shell, "sh", PROGRAM, *words], input=b"secret\n", stdout=out,
                                      stderr=subprocess.PIPE, cwd=self.folder, timeout=SECONDS, check=False)
                statuses.append(done.returncode)
                for name in made:  # documents are written whatever becomes of the rest
                    os.remove(os.path.join(self.folder, name))
        os.close(gone)
        return statuses

    def test_output_that_cannot_be_written_is_noticed(self):
        self.write("a.json", '{"items": [{"type": "text", "text": "x"}]}')
        self.write("a.vxs", "OUTPUT NEW NAME=a.\nOUTPUT COMMENT TEXT='x'.\nECHO 'x'.\nOUTPUT DISPLAY.\n"
                   "OUTPUT SAVE NAME=a OUTFILE='made.vxv'.\nOUTPUT EXPORT /TEXT DOCUMENTFILE='made.txt'.\n")
        self.assertEqual(self.run_program("import", "a.vxv", "a.json", stdout=subprocess.DEVNULL).returncode, 0)
        for words in (["help"], ["help", "OUTPUT", "SAVE"], ["--version"], ["--help"], ["manual"], ["completion", "bash"],
                      ["password"], ["show", "a.vxv"], ["show", "--json", "a.vxv"], ["import", "made.vxv", "a.json"],
                      ["export", "a.vxv", "made.txt"], ["run", "a.vxs"], ["run", "--diagnostics", "json", "a.vxs"],
                      ["run", "--trace", "-", "a.vxs"]):
            self.assertEqual(self.without_output(words), [2, 2, 2], words)
        for words in (["check", "a.vxs"], ["check", "--diagnostics", "json", "a.vxs"], ["run", "--quiet", "a.vxs"],
                      ["import", "--quiet", "made.vxv", "a.json"]):
            self.assertEqual(self.without_output(words), [0, 0, 0], f"{words} prints nothing")

    def test_messages_that_cannot_be_written_are_noticed(self):
        self.write("a.vxs", "OUTPUT NEW NAME=a.\nOUTPUT COMMENT TEXT='x'.\nOUTPUT SAVE OUTFILE='a.vxv'.\n"
                   "OUTPUT OPEN FILE='b.vxv'.\n")
        for words in (["run", "a.vxs"], ["run", "--diagnostics", "json", "a.vxs"]):
            with open("/dev/full", "wb") as full:
                done = subprocess.run([PROGRAM, *words], cwd=self.folder, stdout=subprocess.DEVNULL, stderr=full, timeout=SECONDS,
                                      check=False)
            self.assertEqual(done.returncode, 2, words)
            self.assertTrue(os.path.exists(os.path.join(self.folder, "a.vxv")))

    def test_standard_input_that_gives_nothing(self):
        for words in ([], ["run", "-"], ["import", "--as", "json", "new.vxv", "-"]):
            folder = os.open(self.folder, os.O_RDONLY)
            done = self.run_program(*words, stdin=folder, stdout=subprocess.DEVNULL)
            os.close(folder)
            self.assertEqual(done.returncode, 2, words)
            self.assertIn("Is a directory", done.stderr)
        self.assertEqual(self.run_program(stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL).returncode, 0)

    def test_piped_commands_lose_nothing_unsaid(self):
        def piped(text):
            return subprocess.run([PROGRAM, "--language", "en"], input=text, cwd=self.folder, capture_output=True, text=True,
                                  timeout=SECONDS, check=False)
        done = piped("OUTPUT NEW NAME=a.\nOUTPUT COMMENT TEXT='x'.\n")
        self.assertEqual(done.returncode, 0)
        self.assertEqual(done.stderr, "warning: Changes of these output documents were not saved, and are lost: a.\n")
        self.assertEqual(piped("OUTPUT NEW NAME=a.\n").stderr, "")
        self.assertEqual(piped("OUTPUT NEW NAME=a.\nOUTPUT COMMENT TEXT='x'.\nOUTPUT SAVE OUTFILE='a.vxv'.\n").stderr, "")

    def test_a_signal_at_the_question_for_a_password_gives_the_terminal_back(self):
        for numbers in ((signal.SIGTERM,), (signal.SIGINT,), (signal.SIGHUP,), (signal.SIGTERM, signal.SIGTERM),
                        (signal.SIGINT, signal.SIGHUP), (signal.SIGHUP, signal.SIGTERM, signal.SIGINT)):
            process, terminal = pty.fork()
            if process == 0:
                os.execv(PROGRAM, [PROGRAM, "password"])
            end = time.monotonic() + SECONDS
            while termios.tcgetattr(terminal)[3] & termios.ECHO and time.monotonic() < end:
                time.sleep(0.01)
            self.assertFalse(termios.tcgetattr(terminal)[3] & termios.ECHO)
            for number in numbers:
                os.kill(process, number)
            self.assertIn(os.waitstatus_to_exitcode(os.waitpid(process, 0)[1]), [-number for number in numbers])
            self.assertTrue(termios.tcgetattr(terminal)[3] & termios.ECHO, numbers)
            os.close(terminal)

    def test_a_dumb_terminal_gets_no_colors(self):
        self.write("a.vxs", "OUTPUT NEW NMAE=a.\n")
        shown = {}
        for kind in ("dumb", "xterm"):
            process, terminal = pty.fork()
            if process == 0:
                os.chdir(self.folder)
                os.environ.update(TERM=kind)
                os.environ.pop("NO_COLOR", None)
                os.execv(PROGRAM, [PROGRAM, "run", "a.vxs"])
            shown[kind] = b""
            try:
                while piece := os.read(terminal, 65536):
                    shown[kind] += piece
            except OSError:
                pass
            os.waitpid(process, 0)
            os.close(terminal)
        self.assertIn(b"\x1b[", shown["xterm"])
        self.assertNotIn(b"\x1b", shown["dumb"])

    def test_a_trace_is_private(self):
        self.write("a.vxs", "ECHO 'a'.\n")
        self.write("t.jsonl", '{"event":"flush"}\n')
        os.chmod(os.path.join(self.folder, "t.jsonl"), 0o644)
        for name in ("t.jsonl", "new.jsonl"):
            self.assertEqual(self.run_program("run", "--trace", name, "a.vxs", stdout=subprocess.DEVNULL).returncode, 0)
            self.assertEqual(os.stat(os.path.join(self.folder, name)).st_mode & 0o777, 0o600)


if __name__ == "__main__":
    unittest.main()
