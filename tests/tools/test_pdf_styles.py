# SPDX-License-Identifier: BSD-3-Clause
"""A PDF stays a PDF, whatever made it: after adding steps and after removing them."""

import os
import shutil
import subprocess
import unittest

from support import ToolCase

PROGRAMS = ("qpdf", "pdfinfo", "pdftotext")

STYLES = {
    "classic": ["--object-streams=disable"],
    "streams": ["--object-streams=generate"],
    "linearized": ["--linearize"],
    "linearized streams": ["--linearize", "--object-streams=generate"],
    "encrypted 40": ["--allow-weak-crypto", "--encrypt", "", "owner", "40", "--"],
    "encrypted 128": ["--encrypt", "", "owner", "128", "--use-aes=y", "--"],
    "encrypted 256": ["--encrypt", "", "owner", "256", "--"],
    "qdf": ["--qdf"],
}


def output(*command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    return done.returncode, done.stdout.decode("utf-8", "replace")


@unittest.skipUnless(all(map(shutil.which, PROGRAMS)), "NOT RUN: needs " + ", ".join(PROGRAMS))
class Styles(ToolCase):
    def setUp(self):
        super().setUp()
        self.write("in.txt", b"startxref\n99\n%%EOF\n" * 100)
        self.add("-O", "made", "-1", "First page with text.", "-r", "Second page.\n" * 70,
                 "-d", "title", "Made (\u00fc)", "-d", "author", "Somebody")
        self.delete("made")
        os.rename("made", "made.pdf")

    def documents(self):
        """Pairs of a style and the path of a document in that style."""
        for style, options in STYLES.items():
            code, text = output("qpdf", *options, "made.pdf", style + ".pdf")
            self.assertEqual((code, text), (0, ""), style)
            yield style, style + ".pdf"
        classic = self.read("classic.pdf")
        yield "garbage in front", self.write("garbage.pdf", b"From: somebody\r\n\r\n" + classic)
        yield "no final line end", self.write("cut.pdf", classic.rstrip(b"\n"))
        yield "blanks behind", self.write("behind.pdf", classic + b"\r\n\r\n")
        yield "carriage returns", self.write("cr.pdf", self.with_line_ends(b"\r\n"))
        self.add("-I", "classic.pdf", "-O", "updated.pdf", "-d", "title", "Updated once")
        data = self.read("updated.pdf")
        yield "incremental update", self.write("incremental.pdf", self.without_markers(data))

    def with_line_ends(self, eol):
        """A small document with its lines ended by `eol` throughout."""
        objects = [b"<< /Type /Catalog /Pages 2 0 R >>", b"<< /Type /Pages /Count 1 /Kids [3 0 R] >>",
                   b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 99 99] >>"]
        data, table = b"%PDF-1.3" + eol, [b"0000000000 65535 f\r\n"]
        for number, body in enumerate(objects, 1):
            table.append(b"%010d 00000 n\r\n" % len(data))
            data += eol.join((b"%d 0 obj" % number, body, b"endobj", b""))
        return data + eol.join((b"xref", b"0 4", b"".join(table) + b"trailer << /Size 4 /Root "
                                b"1 0 R >>", b"startxref", b"%d" % len(data), b"%%EOF", b""))

    def without_markers(self, data):
        """The document with the update that a step brought, as if another program had made it."""
        begin = data.index(b"%<--! $LORIX_EMBEDDEDFILE_BEGIN")
        update = data.rindex(b" 0 obj", 0, data.rindex(b"xref\n", 0, data.rindex(b"trailer")))
        update = data.rindex(b"\n", 0, update) + 1
        end = data.index(b"%<--! $LORIX_SECTION")
        table = data.rindex(b"xref\n", update, end)
        front = data[data.index(b"\n") + 1:begin]
        moved = len(front) - update + data.index(b"\n") + 1
        number = int(data[update:].split()[0])
        start = len(front)
        body = data[update:table] + b"xref\n%d 1\n%010d 00000 n \n" % (number, start) \
            + data[data.index(b"trailer", table):end]
        return front + body + b"startxref\n%d\n%%%%EOF\n" % (table + moved - data.index(b"\n") - 1)

    def state(self, path):
        """What readers see of a document, without what a longer file changes."""
        code, info = output("pdfinfo", path)
        lines = [line for line in info.splitlines()
                 if not line.startswith(("File size:", "Optimized:"))]
        return code, lines, output("pdftotext", "-layout", path, "-")

    def check(self, path):
        code, text = output("qpdf", "--check", path)
        lines = [line for line in text.splitlines()
                 if "linear" not in line and not line.startswith("checking")]
        return code, [line for line in lines if "WARNING" in line]

    def test_a_step_changes_nothing_that_readers_see(self):
        for style, path in self.documents():
            with self.subTest(style=style):
                data, state, check = self.read(path), self.state(path), self.check(path)
                if style != "garbage in front":
                    self.assertEqual(check, (0, []))
                for _ in range(2):
                    self.add("-A", path, "-i", "in.txt", "-i", "made.pdf", "-f", "compress")
                    self.container(path)
                    self.assertEqual(self.state(path), state)
                    self.assertEqual(self.check(path), check)
                self.delete(path)
                self.assertEqual(self.state(path), state)
                self.assertEqual(self.check(path), check)
                self.delete(path)
                self.assertEqual(self.read(path), data)

    def test_document_attributes_show_and_go_again(self):
        for style, path in self.documents():
            if style in ("qdf", "encrypted 40", "encrypted 128", "blanks behind"):
                continue  # no different from others in this respect
            with self.subTest(style=style):
                data, state, check = self.read(path), self.state(path), self.check(path)
                outcome = self.add("-A", path, "-d", "title", "New \u00fc (title)", "-d", "subject",
                                   "S", "-i", "in.txt")
                self.container(path)
                if style.startswith("encrypted"):
                    self.assertIn("***WARNING", outcome)
                    self.assertEqual(self.state(path), state)
                else:
                    self.assertEqual(outcome.count("***"), 0, outcome)
                    info = self.state(path)[1]
                    self.assertIn("Title:           New \u00fc (title)", info)
                    self.assertIn("Subject:         S", info)
                    if "Author:          Somebody" in state[1]:
                        self.assertIn("Author:          Somebody", info)
                    self.add("-A", path, "-d", "title", "Newer", "-d", "subject", "")
                    self.container(path)
                    info = self.state(path)[1]
                    self.assertIn("Title:           Newer", info)
                    self.assertNotIn("Subject:         S", info)
                    self.add("-A", path, "-i", "in.txt")
                    self.assertEqual(self.state(path)[1], info)
                    self.assertEqual(self.check(path), check)
                    self.delete(path)
                    self.delete(path)
                self.assertEqual(self.state(path)[2], state[2])
                self.assertEqual(self.check(path), check)
                self.delete(path)
                self.assertEqual(self.read(path), data)

    def test_a_document_made_from_nothing(self):
        self.add("-J", "none", "-O", "new.pdf", "-1", "Report (draft) \\ page", "-r",
                 "one\ttwo\n" + "word " * 100, "-d", "author", "A", "-i", "in.txt")
        self.container("new.pdf")
        self.assertEqual(self.check("new.pdf"), (0, []))
        code, text = output("pdftotext", "-layout", "new.pdf", "-")
        self.assertIn("Report (draft) \\ page", text)
        self.assertEqual(text.count("word"), 100)
        self.assertEqual(text.count("\f"), 2)
        self.assertIn("Author:          A", output("pdfinfo", "new.pdf")[1])

    def test_pages_say_so_where_a_letter_cannot_be_shown(self):
        self.assertIn("***WARNING", self.add("-O", "new.pdf", "-r", "\u4e16\u754c"))
        self.assertEqual(self.check("new.pdf"), (0, []))

    def test_firstpage_and_readme_leave_a_document_alone(self):
        self.assertIn("***WARNING", self.add("-A", "made.pdf", "-r", "text"))
        self.assertNotIn("text", output("pdftotext", "made.pdf", "-")[1].split())

    def test_attributes_of_other_documents_are_recorded_only(self):
        self.assertIn("is no PDF", self.add("-A", "in.txt", "-d", "title", "x"))
        self.container("in.txt")

    def test_without_qpdf_the_attributes_are_recorded_only(self):
        output_text = self.add("-A", "made.pdf", "-d", "title", "x", env={"PATH": "/nowhere"})
        self.assertIn("qpdf is needed", output_text)
        self.container("made.pdf")
        self.assertEqual(self.check("made.pdf"), (0, []))


if __name__ == "__main__":
    unittest.main()
