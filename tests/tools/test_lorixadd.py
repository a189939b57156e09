# SPDX-License-Identifier: BSD-3-Clause
"""lorixadd writes containers in which an independent reader finds every number right."""

import hashlib
import io
import os
import random
import sys
import unittest
import xml.etree.ElementTree

import reader
from support import TOOLS, ToolCase, runs

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


class Documents(ToolCase):
    """Documents that are made to mislead readers."""

    FILE = (b"%<--! $LORIX_EMBEDDEDFILE_BEGIN [filetype:][filename:x][desc:][comment:]"
            b"[compression:none][filesize:1][cfilesize:1][blocksize:BLOCK][offset:1][md5file:]"
            b"[md5cfile:]-->\n")
    SECTION = (b"%<--! $LORIX_SECTION [version:1.0][creator:][title:t][left:1][size:9][index:0]"
               b"[md5section:][previousmd5:][previousmarker:]-->\n")
    HEADER = b"%<--! $LORIX_PDF [version:1.0]-->\n"

    def circle(self, root, steps=2, history=0):
        """Adds steps to `root`, sees that readers find them, and removes them again."""
        self.write("x", root)
        self.write("in", root)
        for number in range(steps):
            self.add("-A", "x", "-i", "in", "-o", "in", "-f", "compress", "-s", "title", "own")
            container = reader.Container(self.read("x"))
            own = [section for section in container.sections if section.title == "own"]
            self.assertEqual(len(own), number + 1)
            self.assertEqual(len(container.sections), number + 1 + history)
            for section in own:
                self.assertEqual(container.section_digest(section), section.md5section)
                files = container.files_in(section)
                self.assertEqual([file.filename for file in files], ["in", "in", "ws_summary.xml"])
                self.assertEqual([container.content(file) for file in files[:2]], [root, root])
        for _ in range(steps):
            self.delete("x")
        self.assertEqual(self.read("x"), root)

    def test_looks_like_an_embedded_file_at_its_end(self):
        length = len(self.FILE.replace(b"BLOCK", b"100"))
        ends = [b"%d" % (length + number) for number in range(-4, 5)]
        for block in [b"", b"0", b"1", b"1000000", b"2147483647", b"99999999999"] + ends:
            with self.subTest(block=block):
                self.circle(self.FILE.replace(b"BLOCK", block) + b"x\n", steps=1)
                self.circle(self.FILE.replace(b"BLOCK", block)[:-1])

    def test_would_hide_the_files_of_a_new_step(self):
        root = b"text\n" + self.FILE.replace(b"BLOCK", b"2000000")
        self.write("x", root)
        self.assertIn("would not see", self.add("-A", "x", code=2))
        self.assertIn("would not see", self.add("-A", "x", "-p", code=2))
        self.assertEqual(self.read("x"), root)

    def test_looks_like_a_section_but_is_no_container(self):
        self.circle(b"text\n" + self.SECTION)
        self.circle(b"\0\n" + self.HEADER + self.SECTION)
        self.circle(b"line\n" * 10 + self.HEADER + self.SECTION)

    def test_is_a_container_without_a_step(self):
        self.circle(self.HEADER)
        self.circle(b"line\n" * 9 + self.HEADER + b"text")

    def test_is_a_container_of_another_writer(self):
        self.circle(b"first\r\n" + self.HEADER + b"text\n" + self.SECTION, history=1)
        self.circle(self.HEADER + b"text\n" + self.SECTION[:-1], history=1)

    def test_marker_in_the_middle_of_a_line_is_linked_to_its_line(self):
        self.write("x", self.HEADER + b"text\nbefore " + self.SECTION + b"behind\n")
        self.add("-A", "x")
        section = reader.Container(self.read("x")).newest()
        line = self.read("x").index(b"before ")
        self.assertEqual(section.position - 1 - section.previousmarker, line)

    def test_line_ends_of_all_kinds(self):
        for root in (b"", b"\n", b"\r", b"\r\n", b"a", b"a\r\nb", b"a\r\nb\r\n", b"a\r", b"\0" * 99,
                     b"x" * 100000):
            with self.subTest(root=root[:9]):
                self.circle(root)
        self.write("crlf", b"one\r\ntwo\r\n")
        self.add("-A", "crlf", "-i", "crlf")
        for line in self.read("crlf").splitlines(True):
            self.assertTrue(line.endswith(b"\r\n") or line.lstrip().startswith(b"<"), line)

    def test_embeds_whole_containers_stored_as_they_are(self):
        self.write("inner.lorix", b"inner\n")
        for _ in range(3):
            self.add("-A", "inner.lorix", "-i", "inner.lorix")
        inner = self.read("inner.lorix")
        self.add("-O", "x", "-i", "inner.lorix", "-i", "inner.lorix")
        container = self.container("x")
        self.assertEqual(len(container.sections), 1)
        self.assertEqual([container.content(file) for file in container.files[:2]], [inner, inner])


class Numbers(ToolCase):
    """The numbers of a marker line depend on their own length; every length is met."""

    def test_all_sizes_around_the_borders(self):
        sys.path.insert(0, TOOLS)
        from lorixtools.section import SectionWriter
        names = ["a", "\u00fc" * 3, "\u00e9" * 8 + "x", "\U0001f600" * 5, "\u20ac" * 50, "\u20ac" * 480]
        file = io.BytesIO(b"%<--! $LORIX_PDF [version:1.0]-->\n")
        file.seek(0, 2)
        writer = SectionWriter(file, "x", b"\n")
        choose = random.Random(2)
        contents = []
        sizes = list(range(0, 12)) + list(range(90, 102)) + list(range(600, 1010, 9)) \
            + list(range(9600, 10010, 40)) + list(range(99300, 100010, 100))
        for size in sizes:
            for name in names:
                for compress in (False, True):
                    data = choose.randbytes(size) if choose.random() < 0.5 else b"x" * size
                    fields = {"filetype": "", "filename": name, "desc": "", "comment": ""}
                    writer.embed(fields, size, [data[:7], data[7:]], compress)
                    contents.append((name, data))
        writer.embed({"filetype": "", "filename": "ws_summary.xml", "desc": "", "comment": ""},
                     0, [], False)
        writer.finish("t", "c", 0, None, b"")
        container = reader.Container(file.getvalue())
        self.assertEqual(container.problems(), [])
        self.assertEqual([(tag.filename, container.content(tag)) for tag in container.files[:-1]],
                         contents)


class Summaries(ToolCase):
    NAMES = ["plain.txt", "R&D <x>.txt", "it's \"here\".txt", "a]b\\c\nd", "&amp;", "R&D]]>.txt",
             "R&D --> x", "\U0001f600 \u00fc&", "b&\\]'\n", "&lt;&", "<b>&</b>", "a&b", "]]>", "<!--",
             "R&D<"]

    def test_files_match_their_markers_and_the_text_is_xml(self):
        arguments = []
        for name in self.NAMES:
            name = name.replace("/", "|")
            self.write(name, b"same")
            for text in ("1 & 2", "]\\ \n'", "</InFile>", "<Filename>"):
                arguments += ["-i", name, "-a", "description", name + text, "-a", "comment", text,
                              "-a", "filetype", "a&b"]
        self.add("-O", "x", "-s", "title", "<&>\"'", *arguments)
        container = self.container("x")
        text = container.content(container.files[-1]).decode()
        document = xml.etree.ElementTree.fromstring(text)
        files = self.summary(container).all("InFile")
        self.assertEqual(len(files), 4 * len(self.NAMES))
        for tag, (_, inside), node in zip(container.files, files, document.iter("InFile")):
            file = reader.Elements(inside)
            self.assertEqual([tag.md5file, str(tag.filesize), tag.compression, str(tag.cfilesize)],
                             [file.get(name) for name in ("UncompressedMD5", "UncompressedSize",
                                                          "CompressedMethod", "CompressedSize")])
            for stored, name in ((tag.filename, "Filename"), (tag.desc, "Description"),
                                 (tag.comment, "Comment"), (tag.filetype, "Filetype")):
                self.assertEqual(node.find(name).text or "", stored)
                if "]]>" in stored or "</InFile>" in stored or "<Filename>" in stored:
                    # Cannot be written in both forms.
                    self.assertEqual(reader.entities(file.get(name)), stored)
                else:
                    self.assertEqual(file.get(name), stored)
        self.assertEqual(document.findtext("Workflowstep/Title"), "<&>\"'")

    def test_signature_is_the_digest_of_the_step(self):
        self.add("-O", "x", "-s", "title", "\u00fc")
        container = self.container("x")
        text = container.content(container.files[-1])
        step = text[text.index(b"<Workflowstep>"):text.index(b"</Workflowstep>") + 15]
        self.assertIn(b"<MD5Signature>%s</MD5Signature>"
                      % hashlib.md5(step).hexdigest().encode(), text)

    def test_large_summaries_are_compressed(self):
        self.write("a", b"")
        self.add("-O", "x", *["-i", "a"] * 200)
        self.assertEqual(self.container("x").files[-1].compression, "flate")

    def test_what_cannot_be_carried_is_replaced(self):
        self.add("-O", "x", "-s", "title", "a\rb\r\nc\x07\x1b[31m\x7f\t\ufffe", "-U", "k\x01", "v\x02")
        container = self.container("x")
        self.assertEqual(container.sections[0].title,
                         "a\\nb\\nc\ufffd\ufffd[31m\ufffd\t\ufffd")
        text = container.content(container.files[-1]).decode()
        document = xml.etree.ElementTree.fromstring(text)
        self.assertEqual(document.findtext(".//Key") + document.findtext(".//Value"),
                         "k\ufffdv\ufffd")

    def test_names_that_are_not_utf8(self):
        with open(b"a\xff\xfeb", "wb") as file:
            file.write(b"content")
        output = self.add("-O", "x", "-i", os.fsdecode(b"a\xff\xfeb"))
        self.assertIn("***WARNING", output)
        self.add("--stdin", stdin=b"-O y -i a\xff\xfeb")
        for name in "xy":
            container = self.container(name)
            self.assertEqual(container.files[0].filename, "a\ufffd\ufffdb")
            self.assertEqual(container.content(container.files[0]), b"content")

    def test_two_equal_files_have_an_entry_each(self):
        self.write("a", b"x")
        self.add("-O", "x", "-i", "a", "-i", "a", "-o", "a")
        container = self.container("x")
        self.assertEqual(len(container.files), 4)
        self.assertEqual([kind for kind, _ in self.summary(container).all("InFile", "OutFile")],
                         ["InFile", "InFile", "OutFile"])

    def test_modification_time_of_a_file(self):
        self.write("a", b"x")
        os.utime("a", (1000000000, 1000000000))
        self.add("-O", "x", "-i", "a", env={"TZ": "UTC"})
        file = reader.Elements(self.summary(self.container("x")).get("InFile"))
        self.assertEqual(file.get("LastModified"), "2001-09-09 01:46:40 +0000")

    def test_the_same_call_gives_the_same_bytes(self):
        self.write("a", b"x" * 1000)
        os.utime("a", (1000000000, 1000000000))
        for name in ("x", "y"):
            self.add("-O", name, "-i", "a", "-f", "compress", "-U", "k", "v",
                     env={"SOURCE_DATE_EPOCH": "1000000000"})
        self.assertEqual(self.read("x"), self.read("y"))


if __name__ == "__main__":
    unittest.main()
