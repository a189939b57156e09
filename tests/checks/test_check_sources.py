#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Shows that each check finds what it is there to find."""
import os
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import check_sources  # noqa: E402

SPDX = "// SPDX-License-Identifier: BSD-3-Clause\n"


class ChecksTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def complaints(self, check, contents):
        for path, text in contents.items():
            full = os.path.join(self.folder.name, path)
            os.makedirs(os.path.dirname(full), exist_ok=True)
            with open(full, "w", encoding="utf-8") as file:
                file.write(text)
        return list(check(self.folder.name))

    def test_registered_tests_pass(self):
        self.assertEqual([], self.complaints(check_sources.registered, {
            "tests/CMakeLists.txt": "add_subdirectory(a)\n",
            "tests/a/CMakeLists.txt": "lorix_test(tst_x SOURCES y.cpp)\n",
            "tests/a/tst_x.cpp": "",
            "tests/a/helper.cpp": ""}))

    def test_forgotten_tests_are_found(self):
        self.assertEqual(
            ["tests/a/tst_x.cpp: not registered in tests/a/CMakeLists.txt",
             "tests/b/tst_y.cpp: folder b is not added in tests"],
            self.complaints(check_sources.registered, {
                "tests/CMakeLists.txt": "add_subdirectory(a)\n# add_subdirectory(b)\n",
                "tests/a/CMakeLists.txt": "lorix_test(tst_xx)\n# lorix_test(tst_x)\n",
                "tests/b/CMakeLists.txt": "lorix_test(tst_y)\n",
                "tests/a/tst_x.cpp": "",
                "tests/b/tst_y.cpp": ""}))

    def test_includes_downwards_pass(self):
        self.assertEqual([], self.complaints(check_sources.layering, {
            "lorix/bounds.h": "",
            "lorix/lorix.h": "#include <lorix/tree/t.h>\n#include <lorix/runner/lorixrunner.h>\n",
            "lorix/runner/log.h": "",
            "lorix/runner/lorixrunner.h": "#include <lorix/argfile/a.h>\n",
            "lorix/argfile/a.h": "#include <lorix/runner/log.h>\n",
            "lorix/container/c.h": "#include <lorix/bounds.h>\n#include <lorix/runner/log.h>\n",
            "lorix/summary/s.h": "#include <lorix/container/c.h>\n",
            "lorix/query/q.cpp": "#include <lorix/summary/s.h>\n#include \"q.moc\"\n",
            "lorix/tree/t.h": "#include <lorix/container/c.h>\n#include <lorix/summary/s.h>\n"}))

    def test_includes_upwards_are_found(self):
        cases = {
            "lorix/container/c.h": "#include <lorix/tree/t.h>\n",
            "lorix/tree/t.h": "#include <lorix/lorix.h>\n",
            "lorix/lorix.h": "",
            "lorix/runner/lorixrunner.h": "",
            "lorix/argfile/a.cpp": "#include <lorix/runner/lorixrunner.h>\n",
            "lorix/query/q.cpp": "#include <lorix/queues/u.h>\n",
            "lorix/queues/u.h": "#include \"../summary/s.h\"\n",
            "lorix/summary/s.h": "#include <lorix/summary/gone.h>\n"}
        self.assertEqual(
            ["lorix/argfile/a.cpp: may not include runner/lorixrunner.h",
             "lorix/container/c.h: may not include tree/t.h",
             "lorix/query/q.cpp: may not include queues/u.h",
             "lorix/queues/u.h: may not include summary/s.h",
             "lorix/summary/s.h: includes summary/gone.h, which is not there",
             "lorix/tree/t.h: may not include lorix.h"],
            self.complaints(check_sources.layering, cases))

    def test_circles_are_found(self):
        self.assertEqual(
            ["includes go in a circle: query/a.h -> query/b.h -> query/c.h -> query/a.h"],
            self.complaints(check_sources.layering, {
                "lorix/query/a.h": "#include <lorix/query/b.h>\n",
                "lorix/query/b.h": "#include <lorix/query/c.h>\n",
                "lorix/query/c.h": "#include <lorix/query/a.h>\n"}))

    def test_missing_licences_are_found(self):
        self.assertEqual(
            ["a.cpp: no licence in its first line", "run: no licence in its first line"],
            self.complaints(check_sources.spdx, {
                "a.cpp": "#pragma once\n" + SPDX,
                "b.cpp": SPDX,
                "build/c.cpp": "",
                "notes.md": "",
                "run": "#!/bin/sh\necho\n",
                "good": "#!/bin/sh\n# SPDX-License-Identifier: BSD-3-Clause\n"}))


if __name__ == "__main__":
    unittest.main()
