# SPDX-License-Identifier: BSD-3-Clause
"""The pages in docs/ are true: transcripts, links, codes, pictures, the index."""

import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from transcripts import ROOT, calls, shows

PROGRAM = Path(os.environ["LORIX_PROGRAM"])
PAGES = sorted([*ROOT.glob("*.md"), *ROOT.glob("docs/*.md")])


def links(page):
    """The targets of a page's links, without what stands in blocks of code."""
    text = re.sub(r"^```.*?^```$", "", page.read_text("utf-8"), flags=re.S | re.M)
    return re.findall(r"\]\(([^)#\s]+)[^)]*\)", text)


class Transcripts(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()
        self.addCleanup(self.dir.cleanup)
        # Where root runs the tests, the database's user must be able to pass.
        Path(self.dir.name).chmod(0o711)

    def compare(self, page, least):
        path = f"{PROGRAM.parent}:{ROOT / 'scripts'}:{os.environ['PATH']}"
        transcript = list(calls(page))
        self.assertGreaterEqual(len(transcript), least)
        for command, expected in transcript:
            with self.subTest(command=command):
                done = subprocess.run(["bash", "-c", command], cwd=self.dir.name, text=True,
                                      env=dict(os.environ, PATH=path), capture_output=True,
                                      check=False)
                if done.returncode == 2 and "'scripts/setup" in done.stderr:
                    continue  # what this shows is not installed
                self.assertTrue(shows(expected, done.stdout),
                                f"printed:\n{done.stdout}{done.stderr}")

    def test_checking_and_extracting(self):
        subprocess.run([str(ROOT / "examples" / "make-example.sh"), self.dir.name], check=True,
                       stdout=subprocess.DEVNULL)
        shutil.rmtree(Path(self.dir.name) / "work")
        self.compare("docs/check.md", 10)

    def test_many_documents(self):
        self.compare("docs/scale.md", 10)

    def test_a_wrong_transcript_is_noticed(self):
        self.assertTrue(shows("a\nb\n", "a\nb\n"))
        self.assertTrue(shows("a\n...\nd\n", "a\nb\nc\nd\n"))
        self.assertTrue(shows("a\n...\n", "a\n"))
        self.assertTrue(shows("", ""))
        for expected, printed in (("a\n", "a\nb\n"), ("a\nb\n", "a\n"), ("a\n...\nc\n", "a\nb\n"),
                                  ("", "a\n"), ("a.\n", "ab\n")):
            self.assertFalse(shows(expected, printed), (expected, printed))


class Pages(unittest.TestCase):
    def test_links_lead_somewhere(self):
        for page in PAGES:
            for target in links(page):
                if "://" not in target:
                    self.assertTrue((page.parent / target).exists(), f"{page.name}: {target}")

    def test_readme_leads_to_every_page(self):
        reached, waiting = set(), [ROOT / "README.md"]
        while waiting:
            page = waiting.pop()
            if page not in reached and page.suffix == ".md" and page.exists():
                reached.add(page)
                waiting += [(page.parent / target).resolve() for target in links(page)]
        self.assertEqual([page.name for page in PAGES if page not in reached], ["api.md"])

    def test_scripts_that_pages_name_are_there(self):
        for page in PAGES:
            text = page.read_text("utf-8")
            for name in re.findall(r"`((?:scripts|bench|\.ci|examples|tests|tools|lorix|apps)/[\w./-]+)",
                                   text):
                if name != "lorix/1":
                    self.assertTrue((ROOT / name).exists(), f"{page.name}: {name}")

    def test_every_code_is_explained(self):
        prefixes = "section|file|chain|nested|limit|input|extract|saved|list|query|step|tool|memory"
        told = set()
        for source in ROOT.glob("apps/lorix/**/*.cpp"):
            told |= set(re.findall(rf'"((?:{prefixes})\.[a-z0-9.]+)"', source.read_text("utf-8")))
        self.assertGreater(len(told), 30)
        page = (ROOT / "docs" / "check.md").read_text("utf-8").partition("## Codes")[2]
        explained = set(re.findall(r"`([a-z0-9]+\.[a-z0-9.]+)`", page))
        self.assertEqual(explained, told)

    def test_pictures_are_drawn_from_their_sources(self):
        for source in ROOT.glob("docs/*.dot"):
            picture = (ROOT / "docs" / "images" / f"{source.stem}.svg").read_text("utf-8")
            for label in re.findall(r'label="([^"]*)"', source.read_text("utf-8")):
                for line in label.split("\\n"):
                    line = line.replace("&", "&amp;").replace("  ", " &#160;")
                    self.assertIn(f">{line}<", picture, "scripts/pictures draws it anew")


if __name__ == "__main__":
    unittest.main()
