# SPDX-License-Identifier: BSD-3-Clause
"""lorixadd writes containers in which an independent reader finds every number right."""

import random
import unittest

import reader
from support import ToolCase, runs

ALPHABET = "ab]\\\n []-<>&'\"%$ü😀\u2028é\tZ"
TRAPS = [b"%<--! $LORIX_PDF [version:1.0]\n",
         b"\n%<--! $LORIX_EMBEDDEDFILE_BEGIN [filetype:][filename:x][desc:][comment:]"
         b"[compression:none][filesize:1][cfilesize:1][blocksize:3][offset:1][md5file:]"
         b"[md5cfile:]-->\nx\n",
         b"\n%<--! $LORIX_SECTION [version:1.0][creator:][title:t][left:1][size:9][index:0]"
         b"[md5section:][previousmd5:][previousmarker:]-->\n", b"\0", b"\r\n", b"\n", b"%%EOF\n"]


class RandomSteps(ToolCase):
    def text(self, choose):
        return "".join(choose.choice(ALPHABET) for _ in range(choose.randrange(12)))

    def content(self, choose):
        return b"".join(choose.choice(TRAPS + [bytes(choose.randrange(256) for _ in range(20))])
                        for _ in range(choose.choice([0, 1, 5, 60])))

    def step(self, choose, number):
        arguments = ["-A", "out.lorix", "-s", "title", self.text(choose)]
        files = []
        for count in range(choose.randrange(5)):
            name = "%d-%d%s" % (number, count, self.text(choose).replace("/", ""))
            description, comment = self.text(choose), self.text(choose)
            self.write(name, self.content(choose))
            arguments += [choose.choice(["-i", "-o"]), name, "-a", "description", description,
                          "-a", "comment", comment, "-f", choose.choice(["", "no-"]) + "compress"]
            files.append((name, description, comment, self.read(name)))
        self.add(*arguments)
        return files

    def test_every_step_reads_back(self):
        for seed in range(runs(12)):
            choose = random.Random(seed)
            self.write("out.lorix", self.content(choose) if seed % 4 else b"%PDF-1.4\nstartxref\n"
                       b"7\n%%EOF")
            while b"LORIX_PDF" in self.read("out.lorix"):
                # It would be taken for a container with a history of its own.
                self.write("out.lorix", self.content(choose))
            root = self.read("out.lorix")
            steps = [self.step(choose, number) for number in range(choose.randrange(1, 6))]
            with self.subTest(seed=seed):
                self.compare(root, steps)

    def compare(self, root, steps):
        container = self.container("out.lorix", b"blocksize" in root)
        self.assertEqual(container.data[:33], b"%<--! $LORIX_PDF [version:1.0]-->")
        body = container.data[33:].lstrip(b"\r\n") if not root[:1].isspace() \
            else container.data[container.data.index(b"\n") + 1:]
        self.assertTrue(body.startswith(root))
        self.assertEqual(len(container.sections), len(steps))
        for files, section in zip(steps, reversed(container.sections)):
            found = container.files_in(section)[:-1]
            self.assertEqual(
                files, [tuple(map(reader.unescape, (file.filename, file.desc, file.comment)))
                        + (container.content(file),) for file in found])


if __name__ == "__main__":
    unittest.main()
