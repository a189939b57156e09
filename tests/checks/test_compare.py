# SPDX-License-Identifier: BSD-3-Clause
"""bench/compare tells slower from faster, by counts that are the same every time."""

import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

COMPARE = Path(__file__).resolve().parents[2] / "bench" / "compare"

# Stands for lorix: does nothing so many times, and then ends with an exit code.
PROGRAM = """
int main(void)
{
    for (volatile int i = 0; i < TIMES; ++i) {
    }
    return CODE;
}
"""


@unittest.skipUnless(shutil.which("valgrind"), "valgrind is not installed; scripts/setup does it")
class Compare(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.dir = tempfile.TemporaryDirectory()
        cls.programs = {}
        for name, times, code in (("plain", 1_000_000, 0), ("slow", 1_100_000, 1),
                                  ("nearly", 1_010_000, 0), ("broken", 1_000_000, 3)):
            source = Path(cls.dir.name) / f"{name}.c"
            source.write_text(PROGRAM.replace("TIMES", str(times)).replace("CODE", str(code)))
            cls.programs[name] = str(source.with_suffix(""))
            subprocess.run(["cc", "-O1", "-o", cls.programs[name], str(source)], check=True)

    @classmethod
    def tearDownClass(cls):
        cls.dir.cleanup()

    def compare(self, before, now, *tasks):
        return subprocess.run([sys.executable, str(COMPARE), *tasks, "--programs",
                               self.programs[before], self.programs[now]],
                              capture_output=True, text=True, check=False)

    def test_counts_are_the_same_every_time(self):
        runs = [self.compare("plain", "plain", "start") for _ in range(2)]
        self.assertEqual(runs[0].returncode, 0, runs[0].stderr)
        self.assertEqual(runs[0].stdout, runs[1].stdout)
        before, now = map(int, re.findall(r"\b\d{6,}\b", runs[0].stdout))
        self.assertEqual(before, now)
        self.assertGreater(before, 3_000_000)

    def test_slower_is_told(self):
        done = self.compare("plain", "slow", "start")
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stdout, r"start .* 1\.0\d+ WORSE\n")

    def test_faster_is_no_fault(self):
        done = self.compare("slow", "plain", "start")
        self.assertEqual(done.returncode, 0)
        self.assertRegex(done.stdout, r"start .* 0\.9\d+ better\n")

    def test_a_little_slower_is_no_fault(self):
        done = self.compare("plain", "nearly", "start")
        self.assertEqual(done.returncode, 0)
        self.assertRegex(done.stdout, r"start .* 1\.0[01]\d+\n")

    def test_task_that_fails_now_is_a_fault(self):
        done = self.compare("plain", "broken", "start")
        self.assertEqual(done.returncode, 1)
        self.assertIn("cannot be done now", done.stdout)
        self.assertEqual(self.compare("broken", "plain", "start").returncode, 0)

    def test_unknown_base_is_refused(self):
        done = subprocess.run([sys.executable, str(COMPARE), "no-such-commit"],
                              capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn("there is no commit", done.stderr)


if __name__ == "__main__":
    unittest.main()
