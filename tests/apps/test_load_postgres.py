# SPDX-License-Identifier: BSD-3-Clause
"""What lorix prints goes into PostgreSQL as it is, cut lines and odd characters included.

Skipped where PostgreSQL is not installed; 'scripts/setup postgresql' installs it.
"""

import csv
import glob
import io
import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = os.environ["LORIX_PROGRAM"]
ROOT = Path(__file__).resolve().parents[2]
COUNT = 60

QUESTIONS = {
    "steps": "select count(*) from steps",
    "files": "select count(*), sum(bytes) from files",
    "invalid": "select file from answers where doc->'valid' = 'false' order by file",
    "findings": "select count(*) from findings",
    "errors": "select code, file from errors",
    "twice": "select doc->>'valid' from answers where file = 'twice'",
    "odd": "select title from steps where file = 'odd'",
}


def answers(text):
    return [json.loads(line) for line in text.splitlines()]


@unittest.skipUnless(glob.glob("/usr/lib/postgresql/*/bin/initdb"),
                     "PostgreSQL is not installed; 'scripts/setup postgresql' installs it")
class LoadPostgres(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()
        self.addCleanup(self.dir.cleanup)
        self.top = Path(self.dir.name)
        # Where root runs the tests, the server's user must be able to pass.
        self.top.chmod(0o711)
        (self.top / "tmp").mkdir()
        (self.top / "tmp").chmod(0o711)
        self.environment = dict(os.environ, TMPDIR=str(self.top / "tmp"))

    def lorix(self, *arguments):
        return subprocess.run([PROGRAM, "--json", "-q", *arguments], cwd=self.top,
                              stdout=subprocess.PIPE, check=False).stdout

    def ask(self, outputs):
        """The rows of every question, and what was said of the lines."""
        call = [sys.executable, str(ROOT / "scripts" / "load-postgres"), "--csv", *outputs]
        for question in QUESTIONS.values():
            call += ["--sql", question]
        result = subprocess.run(call, cwd=self.top, capture_output=True, text=True, check=False,
                                env=self.environment)
        self.assertEqual(result.returncode, 0, result.stderr)
        rows = list(csv.reader(io.StringIO(result.stdout)))
        heads = [i for i, row in enumerate(rows) if row and row[0] in HEADS] + [len(rows)]
        tables = [rows[heads[i] + 1:heads[i + 1]] for i in range(len(heads) - 1)]
        return dict(zip(QUESTIONS, tables)), result.stderr

    def test_tables_hold_what_was_printed(self):
        subprocess.run([sys.executable, str(ROOT / "scripts" / "make-containers"), str(COUNT),
                        str(self.top / "in"), "--bad", "9"], check=True)
        summary = self.lorix("summary", "-r", "in", "missing")
        validate = self.lorix("validate", "-r", "in")
        odd = json.loads(summary.splitlines()[0])
        odd["file"] = "odd"
        odd["steps"][0]["title"] = "zero \0, half \ud83d, back\\slash \\u0000, \"quote\", \u00e4"
        twice = [{"schema": "lorix/1", "command": "validate", "file": "twice", "valid": valid}
                 for valid in (False, True)]
        (self.top / "steps.jsonl").write_bytes(summary + json.dumps(odd).encode() + b"\n"
                                               b"no answer\n[1]\n" + summary[:99])
        (self.top / "checks.jsonl").write_bytes(
            validate + b"".join(json.dumps(line).encode() + b"\n" for line in twice))
        tables, said = self.ask(["steps.jsonl", "checks.jsonl"])
        loaded = len(summary.splitlines()) + 1 + len(validate.splitlines()) + 2
        self.assertIn(f"{loaded} answers loaded, 3 lines left out", said)
        steps = [step for answer in [*answers(summary), odd] for step in answer.get("steps", [])]
        files = [file for step in steps for file in step["files"]]
        checks = answers(validate)
        self.assertEqual(tables["steps"], [[str(len(steps))]])
        self.assertEqual(tables["files"], [[str(len(files)),
                                            str(sum(f["uncompressedSize"] for f in files))]])
        self.assertEqual(tables["invalid"], [[c["file"]] for c in checks if not c["valid"]])
        self.assertGreater(len(tables["invalid"]), 1)
        self.assertEqual(tables["findings"], [[str(sum(len(c.get("findings", []))
                                                       for c in checks))]])
        self.assertEqual(tables["errors"], [["input.missing", "missing"]])
        self.assertEqual(tables["twice"], [["true"]])
        self.assertIn(["zero \ufffd, half \ufffd, back\\slash \\u0000, \"quote\", \u00e4"],
                      tables["odd"])

    def test_bad_question_is_told(self):
        (self.top / "empty.jsonl").write_text("")
        result = subprocess.run([sys.executable, str(ROOT / "scripts" / "load-postgres"),
                                 "empty.jsonl", "--sql", "select nonsense"], cwd=self.top,
                                capture_output=True, check=False, env=self.environment)
        self.assertEqual(result.returncode, 3)
        self.assertEqual(list((self.top / "tmp").iterdir()), [])


# The first column of each question's answer.
HEADS = {"count", "file", "code", "?column?", "title"}

if __name__ == "__main__":
    unittest.main()
