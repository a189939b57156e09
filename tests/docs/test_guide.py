# SPDX-License-Identifier: BSD-3-Clause
"""Every program in docs/guide.md builds against the installed library and prints what it shows."""

import os
import re
import shlex
import subprocess
import tempfile
import unittest
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from transcripts import ROOT, blocks, calls, shows

BUILD = os.environ["LORIX_BUILD"]
COMPILER = os.environ["LORIX_COMPILER"]
# Programs must be built with the sanitizers that the library was built with.
FLAGS = [flag for flag in shlex.split(os.environ["LORIX_FLAGS"]) if "sanitize" in flag]
PAGE = "docs/guide.md"


class Guide(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.dir = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.dir.cleanup)
        cls.top = Path(cls.dir.name)
        cls.prefix = cls.top / "prefix"
        cls.run_tool(["cmake", "--install", BUILD, "--prefix", str(cls.prefix)])
        library = next(cls.prefix.glob("**/liblorix.so"))
        cls.environment = dict(os.environ, LD_LIBRARY_PATH=str(library.parent),
                               PKG_CONFIG_PATH=str(library.parent / "pkgconfig"))
        cls.told = shlex.split(cls.run_tool(["pkg-config", "--cflags", "--libs", "lorix"],
                                            env=cls.environment))
        cls.run_tool([str(ROOT / "examples" / "make-example.sh"), str(cls.top)])
        cls.sources = {}
        for text in blocks(PAGE, "cpp"):
            name = re.match(r"// (\w+)\.cpp\n", text).group(1)
            cls.sources[name] = cls.top / f"{name}.cpp"
            cls.sources[name].write_text(text)

    @staticmethod
    def run_tool(command, **options):
        return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE,
                              **options).stdout

    def build(self, name):
        return subprocess.run([COMPILER, *FLAGS, "-Wall", "-Wextra", "-Werror",
                               str(self.sources[name]), "-o", str(self.top / name), *self.told],
                              text=True, stderr=subprocess.PIPE, check=False)

    def test_programs_print_what_the_page_shows(self):
        self.assertGreaterEqual(len(self.sources), 8)
        with ThreadPoolExecutor(2) as pool:
            for name, built in zip(self.sources, pool.map(self.build, self.sources)):
                self.assertEqual(built.returncode, 0, f"{name}: {built.stderr}")
        transcript = list(calls(PAGE))
        for name in self.sources:
            self.assertTrue(any(f"./{name}" in command for command, _ in transcript), name)
        for command, expected in transcript:
            with self.subTest(command=command):
                done = subprocess.run(command, shell=True, cwd=self.top, env=self.environment,
                                      text=True, capture_output=True, check=False)
                self.assertTrue(shows(expected, done.stdout),
                                f"printed:\n{done.stdout}{done.stderr}")

    def test_cmake_project_builds(self):
        project = self.top / "project"
        project.mkdir()
        (project / "CMakeLists.txt").write_text(blocks(PAGE, "cmake")[0])
        (project / "steps.cpp").write_text(self.sources["steps"].read_text())
        self.run_tool(["cmake", "-G", "Ninja", "-S", str(project), "-B", str(project / "build"),
                       f"-DCMAKE_PREFIX_PATH={self.prefix}", f"-DCMAKE_CXX_COMPILER={COMPILER}",
                       f"-DCMAKE_CXX_FLAGS={' '.join(FLAGS)}"])
        self.run_tool(["cmake", "--build", str(project / "build")])
        printed = self.run_tool([str(project / "build" / "steps"),
                                 str(self.top / "cooling-fin.pdf")], env=self.environment)
        self.assertIn("Mesh study", printed)


if __name__ == "__main__":
    unittest.main()
