# SPDX-License-Identifier: BSD-3-Clause
"""What the add tool writes of a step comes back field by field.

Random steps are added with the real tool, which runs within this process since
a process for each would take longer than all the rest, and are told by the real
program. Which embedded file each file of a step is tied to is worked out here a
second time.
"""

import contextlib
import hashlib
import io
import json
import os
import random
import runpy
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = os.environ["LORIX_PROGRAM"]
TOOLS = os.environ["LORIX_TOOLS"]

STEPS = 500
STEPS_OF_ONE = 10

PIECES = ["a", "b", "mesh", "1", " ", "  ", "&", "<", ">", '"', "'", "&amp;", "&lt;", "<b>", "\\",
          "\\n", "]", "[", "]]>", "-->", "<!--", "<?", "\n", "\t", "%1", "$HOME", "#", "\u00e4",
          "\u20ac", "\U0001f4c4", "-", "--stdin"]
NAMES = ["a.dat", "b.dat", "mesh & co.txt", "x]y\\z", "a<b>.txt", "&lt;.txt", "line\nbreak",
         "\u00e4\U0001f4c4.bin", "inner.lorix", "quote'\".txt"]
STEP_FIELDS = {"title": "title", "description": "description", "comment": "comment",
               "command": "command", "tool": "tool", "toolPath": "toolpath", "host": "host",
               "user": "user"}
DOC_FIELDS = {"pdfTitle": "title", "pdfAuthor": "author", "pdfSubject": "subject",
              "pdfKeywords": "keywords", "pdfProducer": "producer", "pdfCreator": "creator"}
FLAGS = {"preview": "preview", "previewWS": "previewws", "thumbnail": "thumbnail",
         "thumbnailOnly": "thumbnailonly"}


def in_xml(text):
    for char, entity in (("&", "&amp;"), ("<", "&lt;"), (">", "&gt;"), ('"', "&quot;"),
                         ("'", "&apos;")):
        text = text.replace(char, entity)
    return text


def in_marker(text):
    return text.replace("\\", "\\\\").replace("]", "\\]").replace("\n", "\\n")


def add(arguments):
    """Runs the tool as `lorixadd.py ARGUMENTS` would."""
    argv, sys.argv = sys.argv, ["lorixadd.py", *arguments]
    output = io.StringIO()
    try:
        with contextlib.redirect_stdout(output), contextlib.redirect_stderr(output):
            runpy.run_path(os.path.join(TOOLS, "lorixadd.py"), run_name="__main__")
    except SystemExit as end:
        if end.code:
            raise AssertionError(f"exit code {end.code}: {output.getvalue()}") from end
    finally:
        sys.argv = argv


def answer(*arguments):
    output = subprocess.run([PROGRAM, "--json", *arguments], check=True, stdout=subprocess.PIPE)
    return json.loads(output.stdout)


class Attributes:
    """User attributes as they are given to the tool and as they come back."""

    def __init__(self, rng, option, unit_option):
        self.arguments = []
        self.values, self.units, self.keys = {}, {}, []
        for _ in range(rng.choice([0, 0, 1, 3])):
            key, value = rng.choice(["speed", "level", "<k>"]), some_text(rng)
            self.arguments += [option, key, value]
            self.keys.append(in_xml(key))
            self.values[in_xml(key)] = in_xml(value)
            if rng.random() < 0.5:
                unit = some_text(rng)
                self.arguments += [unit_option, key, unit]
                self.units[in_xml(key)] = in_xml(unit)

    def record(self):
        return {"userAttributes": self.values, "userAttributeUnits": self.units,
                "userAttributeKeys": self.keys}


def some_text(rng):
    return "".join(rng.choices(PIECES, k=rng.choice([0, 1, 2, 6])))


class File:
    """One file of a random step."""

    def __init__(self, rng, top):
        folder = rng.choice(["", "", "sub/", "./sub/", str(top) + "/"])
        self.name = rng.choice(NAMES)
        content = rng.choice([b"", b"1", b"same", b"same", b"other\n" * 100])
        self.path = (Path(top) / folder / self.name).resolve()
        self.path.parent.mkdir(exist_ok=True)
        self.path.write_bytes(content)
        self.seconds = rng.randrange(3)
        os.utime(self.path, (1371808800 + self.seconds,) * 2)
        self.folder = folder or "./"
        self.content = content
        self.purpose = rng.choice(["InFile", "OutFile"])
        self.texts = {name: some_text(rng) if rng.random() < 0.4 else ""
                      for name in ("filetype", "description", "comment")}
        self.flags = {name: rng.random() < 0.3 for name in FLAGS.values()}
        self.embed, self.compress = rng.random() < 0.8, rng.random() < 0.5
        self.automd5 = rng.random() < 0.7
        self.attributes = Attributes(rng, "-u", "--file-unit")
        self.arguments = ["-i" if self.purpose == "InFile" else "-o", folder + self.name]
        for name, text in self.texts.items():
            self.arguments += ["-a", name, text]
        for name, value in [*self.flags.items(), ("embed", self.embed),
                            ("compress", self.compress), ("automd5", self.automd5)]:
            self.arguments += ["-f", name if value else "no-" + name]
        self.arguments += self.attributes.arguments

    def record(self):
        """What must come back but for what depends on the embedded file."""
        md5 = hashlib.md5(self.content).hexdigest() if self.embed or self.automd5 else ""
        return {"filename": in_marker(self.name), "filepath": in_xml(self.folder),
                "filetype": in_marker(self.texts["filetype"]),
                "description": in_marker(self.texts["description"]),
                "comment": in_marker(self.texts["comment"]),
                "lastModified": f"2013-06-21 10:00:0{self.seconds} +0000",
                "generateMD5": self.automd5, "embedded": self.embed,
                **{name: self.flags[flag] for name, flag in FLAGS.items()},
                "uncompressedSize": len(self.content), "uncompressedMD5": md5,
                "filePurpose": self.purpose, "fromTags": False, **self.attributes.record()}


def apart(tag, record):
    light = (("filetype", "filetype", 1), ("desc", "description", 1), ("comment", "comment", 1),
             ("md5cfile", "compressedMD5", 2), ("cfilesize", "compressedSize", 2),
             ("compression", "compressedMethod", 2))
    return sum(weight for ours, theirs, weight in light if tag[ours] != record[theirs])


class Step:
    def __init__(self, rng, top):
        self.step = {name: some_text(rng) for name in STEP_FIELDS}
        self.doc = {name: some_text(rng) if rng.random() < 0.3 else "" for name in DOC_FIELDS}
        self.files = [File(rng, top) for _ in range(rng.choice([0, 1, 2, 4, 8]))]
        # The same file named twice has the content that it has at the end.
        self.files = list({file.path: file for file in self.files}.values())
        copies = [f for f in self.files if rng.random() < 0.3]
        self.files += copies
        self.attributes = Attributes(rng, "-U", "--step-unit")

    def arguments(self):
        result = []
        for name, text in self.step.items():
            result += ["-s", STEP_FIELDS[name], text]
        for name, text in self.doc.items():
            result += ["-d", DOC_FIELDS[name], text] if text else []
        for file in self.files:
            result += file.arguments
        return result + self.attributes.arguments

    def records(self, tags):
        """The files that must come back, tied to the section's markers."""
        embedded = iter(tags)
        left = sorted(tags, key=lambda tag: -tag["id"])
        records = []
        for file in self.files:
            record = file.record()
            written = next(embedded) if file.embed else None
            record["compressedMethod"] = ("flate" if file.compress else "none") if written else ""
            record["compressedSize"] = written["cfilesize"] if written else -1
            record["compressedMD5"] = written["md5cfile"] if written else ""
            same = [tag for tag in left if written and tag["filename"] == record["filename"]
                    and tag["md5file"] == record["uncompressedMD5"]
                    and tag["filesize"] == record["uncompressedSize"]]
            nearest = min(same, key=lambda tag: apart(tag, record)) if same else None
            record["tagId"] = nearest["id"] if nearest else -1
            if nearest:
                left.remove(nearest)
            records.append(record)
        return records


class RoundTrip(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        self.top = Path(folder.name).resolve()
        os.chdir(self.top)
        sys.path.insert(0, TOOLS)
        self.addCleanup(sys.path.remove, TOOLS)
        self.matched = self.copies = 0

    def test_random_steps_come_back(self):
        rng = random.Random(20130621)
        steps = STEPS * int(os.environ.get("LORIX_RANDOM_RUNS", "1"))
        for number in range(steps // STEPS_OF_ONE):
            path = f"history{number}.lorix"
            written = []
            for _ in range(STEPS_OF_ONE):
                step = Step(rng, self.top)
                add(["-q", "-A", path, *step.arguments()])
                written.append(step)
            self.check(path, written)
            os.remove(path)
        self.assertGreater(self.matched, steps)
        self.assertGreater(self.copies, steps // 10)

    def check(self, path, written):
        told = answer("summary", path)
        tags = answer("files", path)["files"]
        self.assertEqual(told["sectionless"], [])
        self.assertEqual(len(told["steps"]), len(written))
        for number, (found, step) in enumerate(zip(told["steps"], reversed(written))):
            with self.subTest(path=path, step=number):
                own = [tag for tag in tags if tag["section"] == number]
                self.check_step(found, step, number, path)
                self.check_files(found["files"], step.records(own), own[-1])

    def check_step(self, found, step, number, path):
        expected = {"tagId": number, "fromXml": True, "lorixRootFile": path,
                    **step.attributes.record()}
        for name, text in {**step.step, **step.doc}.items():
            expected[name] = in_xml(text)
        self.assertRegex(found["timestamp"], r"^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d [+-]\d{4}$")
        self.assertRegex(found["md5"], "^[0-9a-f]{32}$")
        self.assertRegex(found["creator"], "^lorixadd ")
        others = ("timestamp", "md5", "creator", "files")
        self.assertEqual({k: v for k, v in found.items() if k not in others}, expected)

    def check_files(self, found, expected, last):
        self.assertEqual(found[:-1], expected)
        self.assertEqual((found[-1]["filename"], found[-1]["tagId"], found[-1]["fromTags"]),
                         ("ws_summary.xml", last["id"], True))
        ids = [file["tagId"] for file in expected if file["embedded"]]
        self.assertNotIn(-1, ids)
        self.assertEqual(len(set(ids)), len(ids))
        self.matched += len(ids)
        self.copies += len(ids) - len({(file["filename"], file["uncompressedMD5"])
                                       for file in expected if file["embedded"]})


if __name__ == "__main__":
    unittest.main()
