# SPDX-License-Identifier: BSD-3-Clause
"""The manual page lorix(1) names all that help names, and man shows it without a complaint."""

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

PROGRAM = os.environ["LORIX_PROGRAM"]
SHELLS = ("bash", "zsh", "fish")


def run(*arguments):
    return subprocess.run([PROGRAM, *arguments], check=True, stdout=subprocess.PIPE).stdout.decode()


def commands():
    listed = run("--help").split("Subcommands:\n")[1]
    return re.findall(r"^  (\S+) +\S", listed, re.M)


def options(*command):
    """Names of the options that help shows, and of what is no option."""
    text = run(*command, "--help")
    named = [name for names in re.findall(r"^  (-\S+)", text, re.M) for name in names.split(",")]
    positionals = text.partition("Positionals:\n")[2].partition("\n\n")[0]
    return named, re.findall(r"^  ([A-Z]+)", positionals, re.M)


def sections(page):
    """The lines of each command's part of the page."""
    body = page.split(".SH COMMANDS\n")[1].split(".SH ")[0]
    return {part.split("\n")[0]: part for part in body.split(".SS ")[1:]}


class Manual(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.page = run("help", "--man")
        cls.plain = cls.page.replace("\\-", "-")

    def test_every_command_has_its_part(self):
        self.assertGreater(len(commands()), 10)
        self.assertEqual(list(sections(self.page)), commands())

    def test_every_option_is_explained(self):
        self.assertGreaterEqual(len(options()[0]), 6)
        front = self.plain.split(".SH COMMANDS\n")[0]
        for name in options()[0]:
            self.assertRegex(front, rf"\.TP\n.*\\fB{name}\\fR.*\n\S.*\.\n")
        for command in commands():
            part = sections(self.plain)[command]
            named, positionals = options(command)
            self.assertIn("--help", named)
            for name in named:
                with self.subTest(command=command, option=name):
                    if name not in ("-h", "--help"):
                        self.assertRegex(part, rf"\.TP\n.*\\fB{name}\\fR.*\n\S.*\.\n")
            for name in positionals:
                with self.subTest(command=command, positional=name):
                    self.assertRegex(part, rf"\.TP\n\\fI{name}\\fR\n\S.*\.\n")

    def test_completions_know_every_option(self):
        for shell in SHELLS:
            script = run("completion", shell)
            for command in commands():
                self.assertRegex(script, rf"\b{command}\b")
                for name in options(command)[0]:
                    with self.subTest(shell=shell, command=command, option=name):
                        written = name
                        if shell == "fish":
                            written = f"-l {name[2:]}" if name[:2] == "--" else f"-s {name[1:]}"
                        self.assertRegex(script, rf"(?<![\w-]){written}(?![\w-])")

    def test_it_says_nothing_of_this_machine(self):
        # The number of processors decides how much is done at once.
        told = re.findall(r"\\fB--jobs\\fR .*\n.*\n.*default: (.*)\n", self.plain)
        self.assertGreaterEqual(len(told), 3)
        self.assertEqual(set(told), {"one per processor."})

    def test_man_shows_it(self):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "lorix.1")
            path.write_text(self.page)
            shown = subprocess.run(["man", "--warnings", "-l", str(path)], check=True,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                   env=dict(os.environ, MANWIDTH="80"))
        self.assertEqual(shown.stderr, b"")
        for heading in (b"SYNOPSIS", b"OPTIONS", b"COMMANDS", b"EXIT STATUS", b"SEE ALSO"):
            self.assertRegex(shown.stdout, rb"(?m)^" + heading + b"$")


if __name__ == "__main__":
    unittest.main()
