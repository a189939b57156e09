# SPDX-License-Identifier: BSD-3-Clause
"""Completion in real shells: what is typed with a tab behind it, and what comes of it."""

import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from shells import Shell

PROGRAM = Path(os.environ["LORIX_PROGRAM"])
PATH = f"{PROGRAM.parent}:{os.environ['PATH']}"

# What is typed, and what the line is then.
COMMON = {
    "lorix val": "lorix validate ",
    "lorix --js": "lorix --json ",
    "lorix --color al": "lorix --color always ",
    "lorix --color never val": "lorix --color never validate ",
    "lorix --color=ne": "lorix --color=never ",
    "lorix tree --format d": "lorix tree --format dot ",
    "lorix tree --rec": "lorix tree --recursive ",
    "lorix tree --format dot rep": "lorix tree --format dot report.pdf ",
    "lorix rep": "lorix report.pdf ",
    "lorix report.pdf --rec": "lorix report.pdf --recursive ",
    "lorix report.pdf tab": "lorix report.pdf table.csv ",
    "lorix extract report.pdf -d ou": "lorix extract report.pdf -d out/",
    "lorix extract report.pdf -d rep": "lorix extract report.pdf -d rep",
    "lorix find -- rep": "lorix find -- rep",
    "lorix find x rep": "lorix find x report.pdf ",
    "lorix find --explain step:titl": "lorix find --explain step:title",
    "lorix find %cont": "lorix find %contains",
    "lorix find 'a:iswfs && a:timest": "lorix find 'a:iswfs && a:timestamp",
    "lorix diff --ignore title,ho": "lorix diff --ignore title,host",
    "lorix help exi": "lorix help exit-status ",
    "lorix completion fi": "lorix completion fish ",
    "lorix add -- -A rep": "lorix add -- -A report.pdf ",
    "lorix cat report.pdf rep": "lorix cat report.pdf rep",
}
# bash closes the quote when there is one way to go on; zsh begins the next item.
BASH = {"lorix find 'a:iswfs && a:timest": "lorix find 'a:iswfs && a:timestamp'"}
ZSH = {"lorix diff --ignore title,ho": "lorix diff --ignore title,host,"}

# What is to be completed, and all that may stand for the last word.
FISH = {
    "lorix val": {"validate"},
    "lorix --js": {"--json"},
    "lorix --color al": {"always"},
    "lorix tree --format d": {"dot"},
    "lorix tree --rec": {"--recursive"},
    "lorix validate --fo": set(),
    "lorix rep": {"report.pdf"},
    "lorix report.pdf --rec": {"--recursive"},
    "lorix extract report.pdf -d ou": {"out/"},
    "lorix extract report.pdf -d rep": set(),
    "lorix find x rep": {"report.pdf"},
    "lorix find step:titl": {"step:title"},
    "lorix find 'a:iswfs && a:timest": {"a:iswfs && a:timestamp"},
    "lorix diff --ignore title,ho": {"title,host"},
    "lorix help exi": {"exit-status"},
    "lorix cat report.pdf rep": set(),
}


def script(shell):
    return subprocess.run([PROGRAM, "completion", shell], check=True,
                          stdout=subprocess.PIPE).stdout


class Completion(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()
        self.addCleanup(self.dir.cleanup)
        for name in ("report.pdf", "table.csv"):
            Path(self.dir.name, name).touch()
        Path(self.dir.name, "out").mkdir()

    def needed(self, shell):
        if shutil.which(shell) is None:
            self.skipTest(f"there is no {shell} here")

    def check_on_a_terminal(self, name, differences):
        self.needed(name)
        with Shell(name, self.dir.name, PATH) as shell:
            for typed, expected in {**COMMON, **differences}.items():
                with self.subTest(typed=typed):
                    self.assertEqual(shell.completed(typed), expected)

    def test_bash_completes(self):
        self.check_on_a_terminal("bash", BASH)

    def test_zsh_completes(self):
        self.check_on_a_terminal("zsh", ZSH)

    def test_fish_completes(self):
        self.needed("fish")
        Path(self.dir.name, "lorix.fish").write_bytes(script("fish"))
        environment = dict(os.environ, PATH=PATH, HOME=self.dir.name, TERM="dumb")
        for typed, expected in FISH.items():
            with self.subTest(typed=typed):
                told = subprocess.run(
                    ["fish", "--no-config", "-c", "source lorix.fish; complete -C $argv[1]", typed],
                    cwd=self.dir.name, env=environment, check=True, stdout=subprocess.PIPE).stdout
                offered = {line.split("\t")[0] for line in told.decode().splitlines()}
                self.assertEqual(offered, expected)

    def test_shells_find_no_fault(self):
        for shell in ("bash", "zsh", "fish"):
            with self.subTest(shell=shell):
                self.needed(shell)
                path = Path(self.dir.name, "script")
                path.write_bytes(script(shell))
                told = subprocess.run([shell, "-n", str(path)], stdout=subprocess.PIPE,
                                      stderr=subprocess.STDOUT, check=False)
                self.assertEqual((told.returncode, told.stdout), (0, b""))

    def test_other_shells_are_refused(self):
        for arguments in (["tcsh"], [], ["bash", "--query", "a:"]):
            with self.subTest(arguments=arguments):
                told = subprocess.run([PROGRAM, "completion", *arguments], check=False,
                                      stdout=subprocess.PIPE, stderr=subprocess.PIPE)
                self.assertEqual((told.returncode, told.stdout), (2, b""))
                self.assertNotEqual(told.stderr, b"")

    def test_queries_go_on_as_the_library_says(self):
        told = subprocess.run([PROGRAM, "completion", "--query", "a:iswfs && b:cf"], check=True,
                              stdout=subprocess.PIPE).stdout.decode()
        self.assertEqual(told, "a:iswfs && b:cfilesize\n")


if __name__ == "__main__":
    unittest.main()
