# SPDX-License-Identifier: BSD-3-Clause
"""The syntax of argument files, and what every option does."""

import hashlib
import os
import random
import sys
import unittest

from support import TOOLS, ToolCase, runs
import reader

sys.path.insert(0, TOOLS)
from lorixtools import argfile  # noqa: E402
from lorixtools.report import ToolError  # noqa: E402

VARIABLES = {"name": "v al", "odd": "a\"b'c\\d#e$f", "empty": ""}

TABLE = [
    ("", []),
    (" \t\r\n", []),
    ("a  b", ["a", "b"]),
    ("  a b\n", ["a", "b"]),
    ("a'b c'd", ["ab cd"]),
    ("'' x", ["", "x"]),
    ('""', [""]),
    ("''\"\"", [""]),
    ("x # comment ' \" \\\ny", ["x", "y"]),
    ("x #c\r\ny", ["x", "y"]),
    ("a#b", ["a"]),
    ("a#b\nc", ["a", "c"]),
    ("#", []),
    ("a\\ b", ["a b"]),
    ("a\\\nb", ["a\nb"]),
    ("\\#x \\' \\\"", ["#x", "'", '"']),
    ('"a\\nb"', ["anb"]),
    ('"a\nb"', ["a\nb"]),
    ("'a\\'", ["a\\"]),
    ("$name", ["v al"]),
    ("${name}x", ["v alx"]),
    ("x$name", ["xv al"]),
    ("\\$name", ["$name"]),
    ("\\\\$name", ["\\v al"]),
    ("\\\\\\$name", ["\\$name"]),
    ("'$name'", ["$name"]),
    ('"$name"', ["v al"]),
    ('"$name"\'$name\'', ["v al$name"]),
    ("$missing", [""]),
    ("a $empty b", ["a", "", "b"]),
    ("$odd", ["a\"b'c\\d#e$f"]),
    ('"$odd"', ["a\"b'c\\d#e$f"]),
    ("$name$name", ["v alv al"]),
    ("$ $. ${ ${a-b} a$", ["$", "$.", "${", "${a-b}", "a$"]),
    ("$name_x", ["v al_x"]),
    ("$n\u00fc", ["\u00fc"]),
]


class Syntax(unittest.TestCase):
    def test_table_of_texts(self):
        for text, expected in TABLE:
            with self.subTest(text=text):
                self.assertEqual(argfile.split(text, VARIABLES, "x"), expected)

    def test_what_has_no_end_is_an_error_with_its_place(self):
        for text, place in (("a\n 'b", "line 2, column 2"), ('"x', "line 1, column 1"),
                            ("x\n\ny \"a\\\"", "line 3, column 3"), ("a\\", "line 1, column 2")):
            with self.subTest(text=text), self.assertRaises(ToolError) as caught:
                argfile.split(text, {}, "name")
            self.assertIn("name: " + place, str(caught.exception))

    def test_quoted_texts_come_back(self):
        choose = random.Random(1)
        for _ in range(runs(2000)):
            words = ["".join(choose.choice("ab \n\t\"'\\$#{}`\u00fc") for _ in range(6))
                     for _ in range(3)]
            text = " ".join('"%s"' % "".join("\\" + char for char in word) for word in words)
            self.assertEqual(argfile.split(text, VARIABLES, "x"), words)

    def test_a_long_text_takes_time_in_proportion(self):
        self.assertEqual(len(argfile.split("word " * 200000, {}, "x")), 200000)
        self.assertEqual(len(argfile.split("\\\\" * 200000 + " 'x'" * 1000, {}, "x")), 1001)


class Options(ToolCase):
    def setUp(self):
        super().setUp()
        self.write("doc.txt", b"document\n")
        self.write("a.txt", b"content of a\n")

    def step(self, *arguments, **options):
        self.add("-I", "doc.txt", "-O", "out", *arguments, **options)
        container = self.container("out")
        return container, self.summary(container)

    def file(self, *arguments, **options):
        container, summary = self.step("-i", "a.txt", *arguments, **options)
        kind, text = summary.all("InFile", "OutFile")[0]
        return container, kind, reader.Elements(text)

    def test_step_attributes(self):
        for option in ("-s", "--step"):
            for name, tag in (("title", "Title"), ("description", "Description"),
                              ("comment", "Comment"), ("tool", "Tool"), ("toolversion", "Tool"),
                              ("toolpath", "ToolPath"), ("host", "Host"), ("user", "User"),
                              ("command", "Command")):
                value = "a <b> & \"c\" 'd' ]\\ \n\u00fc\U0001f600"
                container, summary = self.step(option, name, "old", option, name, value)
                self.assertEqual(reader.entities(summary.get(tag)), value)
                if name == "title":
                    self.assertEqual(reader.unescape(container.sections[0].title), value)

    def test_a_step_without_attributes_invents_none(self):
        _, summary = self.step()
        for tag in ("Title", "Description", "Comment", "Tool", "ToolPath", "Host", "User",
                    "Command", "PDFTitle", "PDFAuthor"):
            self.assertEqual(summary.get(tag), "", tag)
        self.assertEqual(summary.get("LorixRootFile"), "doc.txt")
        self.assertEqual(summary.get("Creator"), "lorixadd 1.83.0")

    def test_timestamp_is_local_time_or_what_the_environment_says(self):
        _, summary = self.step(env={"SOURCE_DATE_EPOCH": "86399"})
        self.assertEqual(summary.get("Timestamp"), "1970-01-01 23:59:59 +0000")
        _, summary = self.step(env={"TZ": "UTC-2"})
        self.assertRegex(summary.get("Timestamp"), r"^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \+0200$")

    def test_document_attributes_are_recorded(self):
        _, summary = self.step("-d", "title", "T", "--doc", "author", "A", "-d", "subject", "S",
                               "-d", "keywords", "K", "-d", "creator", "C", "-d", "producer", "P")
        self.assertEqual([summary.get("PDF" + tag) for tag in
                          ("Title", "Author", "Subject", "Keywords", "Creator", "Producer")],
                         list("TASKCP"))

    def test_file_attributes(self):
        container, kind, file = self.file("-a", "filetype", "text/plain", "--file-attr",
                                          "description", "d]", "-a", "comment", "c\nd")
        tag = container.files[0]
        self.assertEqual((kind, tag.filetype, tag.desc, tag.comment),
                         ("InFile", "text/plain", "d\\]", "c\\nd"))
        self.assertEqual((file.get("Filetype"), file.get("Description"), file.get("Comment")),
                         ("text/plain", "d\\]", "c\\nd"))

    def test_in_and_out_files_in_any_spelling_and_order(self):
        _, summary = self.step("-i", "a.txt", "--outfile", "a.txt", "-o", "doc.txt", "--infile",
                               "./a.txt")
        self.assertEqual([(kind, reader.Elements(text).get("Filepath"),
                           reader.Elements(text).get("Filename"))
                          for kind, text in summary.all("InFile", "OutFile")],
                         [("InFile", "./", "a.txt"), ("OutFile", "./", "a.txt"),
                          ("OutFile", "./", "doc.txt"), ("InFile", "./", "a.txt")])

    def test_flags_are_recorded_and_the_last_one_counts(self):
        for flag, tag in (("automd5", "GenerateMD5"), ("embed", "Embedded"),
                          ("preview", "Preview"), ("previewws", "PreviewWS"),
                          ("thumbnail", "Thumbnail"), ("thumbnailonly", "ThumbnailOnly")):
            default = "1" if flag in ("automd5", "embed") else "0"
            self.assertEqual(self.file()[2].get(tag), default)
            self.assertEqual(self.file("-f", "no-" + flag, "--file-flag", flag)[2].get(tag), "1")
            self.assertEqual(self.file("-f", flag, "-f", "no-" + flag)[2].get(tag), "0")

    def test_compress_stores_a_stream(self):
        self.write("a.txt", b"x" * 10000)
        container, _, file = self.file("-f", "compress")
        self.assertEqual(container.files[0].compression, "flate")
        self.assertLess(container.files[0].cfilesize, 100)
        self.assertEqual(container.content(container.files[0]), b"x" * 10000)
        tag = container.files[0]
        self.assertEqual((file.get("CompressedMethod"), file.get("CompressedSize"),
                          file.get("CompressedMD5"), file.get("UncompressedSize")),
                         ("flate", str(tag.cfilesize), tag.md5cfile, "10000"))

    def test_a_file_that_is_not_embedded_is_in_the_summary_alone(self):
        container, _, file = self.file("-f", "no-embed")
        self.assertEqual([tag.filename for tag in container.files], ["ws_summary.xml"])
        self.assertEqual((file.get("UncompressedSize"), file.get("UncompressedMD5"),
                          file.get("CompressedMethod"), file.get("CompressedSize")),
                         ("13", hashlib.md5(b"content of a\n").hexdigest(),
                          "", ""))
        _, _, file = self.file("-f", "no-embed", "-f", "no-automd5")
        self.assertEqual(file.get("UncompressedMD5"), "")
        _, _, file = self.file("-f", "no-embed", "-f", "no-automd5", "-a", "md5file", "A" * 32)
        self.assertEqual(file.get("UncompressedMD5"), "a" * 32)

    def test_a_given_digest_must_be_right(self):
        self.add("-A", "out", "-i", "a.txt", "-a", "md5file", "0" * 32, code=2)
        self.add("-A", "out", "-i", "a.txt", "-a", "md5file", "xyz", code=2)
        self.assertEqual(sorted(os.listdir()), ["a.txt", "doc.txt"])

    def test_an_optional_file_may_be_missing(self):
        self.assertIn("no such file", self.add("-A", "out", "-i", "none", code=2))
        _, summary = self.step("-i", "none", "-f", "optional", "-i", "a.txt")
        self.assertEqual(len(summary.all("InFile")), 1)

    def test_user_attributes_of_step_and_file(self):
        _, summary = self.step("-U", "load & co", "12.5", "--step-user", "b", "", "--step-unit",
                               "load & co", "kN/m\u00b2", "-i", "a.txt", "-u", "k", "v", "-u", "k",
                               "w", "--file-unit", "k", "mm")

        def attributes(element):
            return [tuple(reader.entities(value) if value is not None else None for value in
                          (item.get("Key"), item.get("Value"), item.get("Unit")))
                    for item in (reader.Elements(text) for _, text in
                                 reader.Elements(element.get("UserAttributes")).all("Attribute"))]
        self.assertEqual(attributes(summary), [("load & co", "12.5", "kN/m\u00b2"), ("b", "", None)])
        file = reader.Elements(summary.get("InFile"))
        self.assertEqual(attributes(file), [("k", "v", "mm"), ("k", "w", "mm")])

    def test_file_options_before_any_file_are_ignored_with_a_warning(self):
        output = self.add("-A", "out", "-f", "compress", "-a", "comment", "x", "-u", "k", "v")
        self.assertEqual(output.count("***WARNING"), 3)

    def test_append_makes_or_continues_a_container(self):
        self.add("-A", "new", "-s", "title", "1")
        self.add("--append-to-lorixfile", "new", "-s", "title", "2")
        container = self.container("new")
        self.assertEqual([(section.title, section.index) for section in container.sections],
                         [("2", 1), ("1", 0)])

    def test_roots_that_are_missing(self):
        self.assertIn("no such file", self.add("-I", "none", "-O", "out", code=2))
        self.assertFalse(os.path.exists("out"))
        self.add("-J", "none", "-O", "out")
        self.assertTrue(self.read("out").split(b"\n")[1].startswith(b"%PDF-"))

    def test_several_outputs_are_the_same(self):
        self.add("-I", "doc.txt", "-O", "out1", "-O", "./out1", "-O", "out2", "-i", "a.txt")
        self.container("out1")
        self.assertEqual(self.read("out1"), self.read("out2"))
        self.assertEqual(self.read("doc.txt"), b"document\n")

    def test_no_output_is_an_error(self):
        self.assertIn("no file to write", self.add("-I", "doc.txt", code=2))
        self.add(code=2)

    def test_pretend_writes_nothing(self):
        output = self.add("-A", "doc.txt", "-i", "a.txt", "-p")
        self.assertIn("would be", output)
        self.add("-A", "new", "--pretend")
        self.add("-A", "doc.txt", "-i", "none", "--pretend", code=2)
        self.assertEqual(sorted(os.listdir()), ["a.txt", "doc.txt"])
        self.assertEqual(self.read("doc.txt"), b"document\n")

    def test_verbosity(self):
        self.assertEqual(self.add("-A", "out", "-i", "a.txt", "-q"), "")
        self.assertEqual(self.add("-A", "out", "-i", "a.txt", "--quiet"), "")
        self.assertEqual(self.add("-A", "out", "-i", "a.txt").count("\n"), 1)
        self.assertEqual(self.add("-A", "out", "-i", "a.txt", "-v").count("\n"), 2)
        self.assertIn("Traceback", self.add("-A", "out", "-i", "none", "--debug", code=2))

    def test_help_names_every_option_and_version_the_version(self):
        for option in ("-h", "--help"):
            text = self.add(option, "-A", "out")
        from lorixtools.options import OPTIONS
        for long, short, _, _ in OPTIONS:
            self.assertIn(long, text)
            self.assertIn(short, text)
        for option in ("-V", "--version"):
            self.assertEqual(self.add(option), "lorixadd 1.83.0\n")
        self.assertFalse(os.path.exists("out"))

    def test_bad_calls(self):
        for arguments, message in (
                (["--bogus"], "unknown option found: --bogus"),
                (["x"], "unknown option found: x"),
                (["-s", "title"], "not enough parameters for option: -s"),
                (["-A"], "not enough parameters for option: -A"),
                (["-s", "Title", "x"], "first parameter (Title) of option -s is invalid"),
                (["-d", "x", "y"], "first parameter (x) of option -d is invalid"),
                (["-i", "a.txt", "-a", "name", "y"], "first parameter (name) of option -a"),
                (["-i", "a.txt", "-f", "no-no-embed"], "option -f is invalid"),
                (["-i", ""], "an empty file name"),
                (["-i", "sub/"], "directory"),
                (["-i", "."], "not a regular file"),
                (["-i", "/dev/null"], "not a regular file"),
                (["-c", "none"], "no such argument file")):
            with self.subTest(arguments=arguments):
                self.assertIn(message, self.add("-A", "out", *arguments, code=2))
        self.assertFalse(os.path.exists("out"))

    def test_options_from_standard_input(self):
        self.add("--stdin", stdin=b"-A out -s title \"$TITLE\" -s user 'x y' # comment\n-i a.txt",
                 env={"TITLE": "from $outside"})
        self.assertEqual(self.container("out").sections[0].title, "from $outside")
        self.add("--stdin", stdin=b"-A out -s title 'x", code=2)
        self.add("--stdin", stdin=b"-A out\0", code=2)
        self.add("--stdin", "--stdin", stdin=b"-A out", code=2)

    def test_options_from_argument_files(self):
        os.mkdir("sub")
        self.write("sub/args", b"\xef\xbb\xbf-i b.txt -c more # what it used\n")
        self.write("sub/more", b"-s title 'from more'\n")
        self.write("sub/b.txt", b"in sub")
        self.write("b.txt", b"not in sub")
        container, _ = self.step("-c", "sub/args")
        self.assertEqual(container.content(container.files[0]), b"not in sub")
        container, summary = self.step("-c", "sub/args", "--sync-cwd")
        self.assertEqual(container.content(container.files[0]), b"in sub")
        self.assertEqual(summary.get("Title"), "from more")
        self.assertEqual(reader.Elements(summary.get("InFile")).get("Filepath"), "./")

    def test_argument_files_that_name_themselves_end(self):
        self.write("loop", b"-c loop")
        self.assertIn("deep", self.add("-A", "out", "-c", "loop", code=2))


if __name__ == "__main__":
    unittest.main()
