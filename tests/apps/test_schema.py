# SPDX-License-Identifier: BSD-3-Clause
"""Every line that --json prints fits the schema that `lorix schema` prints.

The calls below run on a container made by the real tool, on a damaged copy, on
a file that is no container and on one that is not there. A command that the
schema knows and no call covers fails the test.
"""

import json
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

import jsonschema

PROGRAM = os.environ["LORIX_PROGRAM"]
TOOLS = Path(os.environ["LORIX_TOOLS"])

# The arguments of each command; {file} stands for the input, {copy} for a copy of it.
CALLS = {
    "info": [["info", "{file}"]],
    "sections": [["sections", "{file}"]],
    "files": [["files", "{file}"]],
    "validate": [["validate", "{file}"]],
    "extract": [["extract", "{file}", "-d", "{out}"],
                ["extract", "--dry-run", "{file}", "-d", "{out}"]],
    "summary": [["summary", "{file}"], ["summary", "--files", "{file}"]],
    "find": [["find", "report", "{file}"], ["find", "a:isfile && b:iswfs", "{file}"],
             ["find", "a:nonsense", "{file}"]],
    "tree": [["tree", "{file}"]],
    "diff": [["diff", "{file}", "{good}"]],
    "args": [["args", "{argfile}"], ["args", "{file}"]],
    "add": [["add", "--", "-A", "{out}/new.lorix", "-i", "{file}"], ["add", "--", "--bogus"]],
    "del": [["del", "{copy}"], ["del", "{copy}", "{copy}"]],
}


def run(arguments):
    return subprocess.run([PROGRAM, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          stdin=subprocess.DEVNULL, check=False)


class SchemaTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.schema = json.loads(run(["schema"]).stdout)
        jsonschema.Draft202012Validator.check_schema(cls.schema)
        cls.validator = jsonschema.Draft202012Validator(cls.schema)

    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()
        self.addCleanup(self.dir.cleanup)
        top = Path(self.dir.name)
        (top / "report.txt").write_text("a report\n" * 200)
        (top / "odd ]\\name.txt").write_text("odd\n")
        argfile = (f"-O '{top}/good.lorix' -s title 'A step & more' -s tool solver -s user ann "
                   f"-U mesh.size 3 -i '{top}/report.txt' -f compress -u quality fine "
                   f"-o '{top}/odd ]\\name.txt'\n")
        (top / "step.args").write_text(argfile)
        subprocess.run(["python3", str(TOOLS / "lorixadd.py"), "--stdin"], input=argfile.encode(),
                       check=True, stdout=subprocess.DEVNULL)
        good = (top / "good.lorix").read_bytes()
        (top / "damaged.lorix").write_bytes(good.replace(b"A step", b"B step", 1)[:-40] + b"x" * 40)
        (top / "plain.txt").write_text("no container\n")
        self.top = top

    def commands(self):
        return {part["properties"]["command"]["const"] for part in self.schema["oneOf"]}

    def test_every_command_with_json_is_called(self):
        self.assertLessEqual(self.commands(), set(CALLS))
        self.assertGreaterEqual(len(self.commands()), 3)

    def test_every_line_fits(self):
        inputs = ["good.lorix", "damaged.lorix", "plain.txt", "missing"]
        for command in sorted(self.commands()):
            for call in CALLS[command]:
                for name in inputs:
                    with self.subTest(call=call, input=name):
                        self.check(call, command, self.top / name)

    def check(self, call, command, path):
        with tempfile.TemporaryDirectory() as out:
            copy = Path(out) / path.name
            if path.exists():
                shutil.copy(path, copy)
            values = {"file": str(path), "copy": str(copy), "out": out,
                      "good": str(self.top / "good.lorix"), "argfile": str(self.top / "step.args")}
            result = run(["--json", *(part.format(**values) for part in call)])
        self.assertIn(result.returncode, (0, 1, 2), result.stderr)
        lines = result.stdout.decode().splitlines()
        self.assertGreaterEqual(len(lines), 1, result.stderr)
        for line in lines:
            answer = json.loads(line)
            self.validator.validate(answer)
            self.assertEqual(answer["command"], command)


if __name__ == "__main__":
    unittest.main()
