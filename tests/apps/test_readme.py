# SPDX-License-Identifier: BSD-3-Clause
"""The README's transcript is what the program prints about the example today."""

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

PROGRAM = Path(os.environ["LORIX_PROGRAM"])
ROOT = Path(__file__).resolve().parents[2]


def transcript():
    """Pairs of a shell command and the lines below it, from the README's first block."""
    block = re.search(r"```console\n(.*?)```", (ROOT / "README.md").read_text("utf-8"), re.S)
    for call in re.split(r"^\$ ", block.group(1), flags=re.M)[1:]:
        command, _, output = call.partition("\n")
        yield command, output.strip("\n").split("\n")


class Readme(unittest.TestCase):
    def test_transcript_is_what_is_printed(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([str(ROOT / "examples" / "make-example.sh"), folder], check=True,
                           stdout=subprocess.DEVNULL)
            environment = dict(os.environ, PATH=f"{PROGRAM.parent}:{os.environ['PATH']}")
            calls = list(transcript())
            self.assertGreaterEqual(len(calls), 3)
            for command, expected in calls:
                with self.subTest(command=command):
                    printed = subprocess.run(command, shell=True, cwd=folder, env=environment,
                                             stdout=subprocess.PIPE, check=False).stdout.decode()
                    # "..." stands for lines left out.
                    for part in "\n".join(expected).split("\n...\n"):
                        self.assertIn(part + "\n", printed)


if __name__ == "__main__":
    unittest.main()
