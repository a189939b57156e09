# SPDX-License-Identifier: BSD-3-Clause
"""What the tests of the tools share."""

import os
import subprocess
import sys
import tempfile
import unittest

import reader

TOOLS = os.environ.get("LORIX_TOOLS") or os.path.join(
    os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools")


def runs(number):
    """How often a random test is repeated; LORIX_RANDOM_RUNS multiplies."""
    return max(1, int(number * float(os.environ.get("LORIX_RANDOM_RUNS", "1"))))


class Outcome:
    def __init__(self, code, output):
        self.code = code
        self.output = output

    def __repr__(self):
        return "exit code %d\n%s" % (self.code, self.output)


def start(tool, *arguments, **options):
    options.setdefault("stdout", subprocess.PIPE)
    return subprocess.Popen([sys.executable, os.path.join(TOOLS, tool + ".py")] + list(arguments),
                            stdin=subprocess.PIPE, stderr=subprocess.STDOUT, **options)


def run(tool, *arguments, stdin=b"", env=None, cwd=None):
    """Runs a tool; output and errors come together, as programs that run it see them."""
    environment = dict(os.environ, **(env or {}))
    process = start(tool, *arguments, env=environment, cwd=cwd)
    output, _ = process.communicate(stdin)
    return Outcome(process.returncode, output.decode("utf-8"))


class ToolCase(unittest.TestCase):
    """A test with a directory of its own, which is the current one."""

    def setUp(self):
        self._folder = tempfile.TemporaryDirectory()
        self.addCleanup(self._folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(self._folder.name)

    def write(self, name, data):
        with open(name, "wb") as file:
            file.write(data)
        return name

    def read(self, name):
        with open(name, "rb") as file:
            return file.read()

    def add(self, *arguments, code=0, **options):
        outcome = run("lorixadd", *arguments, **options)
        self.assertEqual(outcome.code, code, outcome)
        if code:
            self.assertIn("***ERROR", outcome.output)
        return outcome.output

    def delete(self, *arguments, code=0, **options):
        outcome = run("lorixdel", *arguments, **options)
        self.assertEqual(outcome.code, code, outcome)
        return outcome.output

    def container(self, name, strangers=False):
        """The container in the file `name`, which must be right in every number."""
        result = reader.Container(self.read(name))
        self.assertEqual(result.problems(strangers), [])
        return result

    def summary(self, container, section=0):
        """The step's element of a section's summary."""
        last = container.files_in(container.sections[section])[-1]
        root = reader.Elements(container.content(last).decode("utf-8")).get("loxchange")
        return reader.Elements(reader.Elements(root).get("Workflowstep"))
