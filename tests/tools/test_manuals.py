# SPDX-License-Identifier: BSD-3-Clause
"""The manual pages name every option of the tools, and man shows them without a complaint."""

import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

from support import TOOLS

DOCS = Path(TOOLS).parent / "docs" / "man"


def options(tool):
    text = subprocess.run([sys.executable, os.path.join(TOOLS, tool + ".py"), "--help"], check=True,
                          stdout=subprocess.PIPE).stdout.decode()
    return set(re.findall(r"^  (?:(-\w), )?(--?[\w-]+)", text, re.M))


class Manuals(unittest.TestCase):
    def test_every_option_is_explained(self):
        for tool in ("lorixadd", "lorixdel"):
            page = (DOCS / (tool + ".1")).read_text().replace("\\-", "-")
            found = options(tool)
            self.assertGreater(len(found), 5)
            for names in found:
                for name in filter(None, names):
                    with self.subTest(tool=tool, option=name):
                        self.assertIn("\\fB%s\\fR" % name, page)

    def test_man_shows_them(self):
        for tool in ("lorixadd", "lorixdel"):
            shown = subprocess.run(["man", "--warnings", "-l", str(DOCS / (tool + ".1"))],
                                   check=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            self.assertEqual(shown.stderr, b"")
            self.assertIn(b"EXIT STATUS", shown.stdout)


if __name__ == "__main__":
    unittest.main()
