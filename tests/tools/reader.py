# SPDX-License-Identifier: BSD-3-Clause
"""A plain reader of containers for the tests of the tools that write them.

It shares no code with the tools, holds the file in memory and walks it line by
line, as slowly and as literally as possible.
"""

import hashlib
import re
import zlib

TEXT = r"((?:[^\]\\]|(?:\\\\)|(?:\\\])|(?:\\n))*)"
INT = r"([0-9]*)"
MD5 = r"((?:)|(?:[a-f0-9]{32}))"
SECTION = re.compile(
    r"%<--! \$LORIX_SECTION \[version:T\]\[creator:T\]\[title:T\]\[left:I\]\[size:I\]\[index:I\]"
    r"\[md5section:M\]\[previousmd5:M\]\[previousmarker:I\]-->"
    .replace(":T", ":" + TEXT).replace(":I", ":" + INT).replace(":M", ":" + MD5))
FILE = re.compile(
    r"%<--! \$LORIX_EMBEDDEDFILE_BEGIN \[filetype:T\]\[filename:T\]\[desc:T\]\[comment:T\]"
    r"\[compression:T\]\[filesize:I\]\[cfilesize:I\]\[blocksize:I\]\[offset:I\]\[md5file:M\]"
    r"\[md5cfile:M\]-->"
    .replace(":T", ":" + TEXT).replace(":I", ":" + INT).replace(":M", ":" + MD5))
SECTION_NAMES = ["version", "creator", "title", "left", "size", "index", "md5section",
                 "previousmd5", "previousmarker"]
FILE_NAMES = ["filetype", "filename", "desc", "comment", "compression", "filesize", "cfilesize",
              "blocksize", "offset", "md5file", "md5cfile"]
NUMBERS = {"left", "size", "index", "previousmarker", "filesize", "cfilesize", "blocksize",
           "offset"}


class Record:
    def __init__(self, position, text, names, values):
        self.position = position
        self.taglen = len(text.encode("utf-16-le", "surrogatepass")) // 2 - 1
        for name, value in zip(names, values):
            if name in NUMBERS:
                value = -1 if value == "" else int(value)
                if value > 2147483647:
                    value = 0
            setattr(self, name, value)


def as_text(line):
    return None if b"\0" in line else line.decode("utf-8", "replace")


class Container:
    def __init__(self, data):
        self.data = data
        self.ok = self.header_found()
        self.sections = self.read_sections() if self.ok else []
        self.files = self.find_files() if self.ok else []

    def line_at(self, position):
        end = self.data.find(b"\n", position)
        return self.data[position:] if end < 0 else self.data[position:end + 1]

    def header_found(self):
        position = 0
        for _ in range(10):
            line = self.line_at(position)
            if as_text(line) is None:
                return False
            if as_text(line).startswith("%<--! $LORIX_PDF [version:1.0]"):
                return True
            position += len(line)
        return False

    def parse(self, pattern, names, text, position):
        found = pattern.match(text) if text is not None else None
        return Record(position + 1, found.group(0), names, found.groups()) if found else None

    def section_of_line(self, line, position):
        text = as_text(line)
        if text is None:
            return None
        place = text.find("%<--! $LORIX_SECTION")
        return self.parse(SECTION, SECTION_NAMES, text[place:], position) if place >= 0 else None

    def newest(self):
        end = len(self.data)
        while end > 0:
            start = self.data.rfind(b"\n", 0, end - 1) + 1
            found = self.section_of_line(self.data[start:end], start)
            if found:
                return found
            end = start
        return None

    def read_sections(self):
        result = []
        section = self.newest()
        while section:
            result.append(section)
            if section.previousmarker < 0:
                break
            position = section.position - 1 - section.previousmarker
            section = self.parse(SECTION, SECTION_NAMES, as_text(self.line_at(position)), position)
        return result

    def find_files(self):
        result = []
        position = 0
        while position < len(self.data):
            line = self.line_at(position)
            if line.startswith(b"%<--! $LORIX_EMBEDDEDFILE_BEGIN"):
                found = self.parse(FILE, FILE_NAMES, as_text(line), position)
                if found:
                    result.append(found)
                    target = found.position + found.blocksize
                    if 0 <= target < len(self.data):
                        position = target
                        line = self.line_at(position)
            position += len(line)
        return result

    def begin(self, section):
        return section.position - section.left

    def files_in(self, section):
        begin = self.begin(section)
        return [file for file in self.files if begin <= file.position
                and file.position + file.taglen + file.blocksize <= begin + section.size]

    def section_digest(self, section):
        begin, end = self.begin(section), self.begin(section) + section.size
        line = self.line_at(section.position - 1)
        tag = line.replace(b"[md5section:" + section.md5section.encode() + b"]",
                           b"[md5section:" + b"0" * 32 + b"]")[1:]
        fed = self.data[begin:section.position] + tag
        fed += self.data[section.position + len(tag):][:section.size - len(fed)]
        return hashlib.md5(fed).hexdigest() if len(fed) == section.size else "short"

    def stored(self, file):
        start = file.position + file.taglen + file.offset
        data = self.data[start:start + file.cfilesize]
        if len(data) != file.cfilesize:
            raise ValueError("stored bytes lie outside the file")
        return data

    def content(self, file):
        data = self.stored(file)
        if file.compression == "flate":
            stream = zlib.decompressobj()
            data = stream.decompress(data)
            if not stream.eof or stream.unused_data:
                raise ValueError("broken stream")
        elif file.compression != "none":
            raise ValueError("compression method")
        return data

    def problems(self, strangers=False):
        """Everything that is wrong with the container, in words. With `strangers`
        the document itself may hold what looks like embedded files."""
        result = [] if self.ok else ["no header"]
        for number, section in enumerate(self.sections):
            if self.section_digest(section) != section.md5section:
                result.append("section %d: digest" % number)
            older = self.sections[number + 1] if number + 1 < len(self.sections) else None
            if section.previousmd5 != (older.md5section if older else ""):
                result.append("section %d: previousmd5" % number)
            if older and self.begin(section) != self.begin(older) + older.size:
                result.append("section %d: does not follow the one before" % number)
            names = [file.filename for file in self.files_in(section)]
            if names[-1:] != ["ws_summary.xml"]:
                result.append("section %d: summary is not the last file" % number)
        if self.sections and self.begin(self.sections[0]) + self.sections[0].size \
                != len(self.data):
            result.append("the newest section does not reach the end")
        owned = [file for section in self.sections for file in self.files_in(section)]
        for number, file in enumerate(owned):
            result += self.file_problems(number, file)
        if not strangers and len(owned) != len(self.files):
            result.append("files outside the sections")
        return result

    def file_problems(self, number, file):
        result = []
        try:
            content = self.content(file)
            if len(content) != file.filesize:
                result.append("file %d: filesize" % number)
            if hashlib.md5(content).hexdigest() != file.md5file:
                result.append("file %d: md5file" % number)
            if file.compression == "none" and file.cfilesize != file.filesize:
                result.append("file %d: cfilesize" % number)
            if file.compression == "flate" \
                    and hashlib.md5(self.stored(file)).hexdigest() != file.md5cfile:
                result.append("file %d: md5cfile" % number)
        except (ValueError, zlib.error) as error:
            result.append("file %d: %s" % (number, error))
        end = file.position + file.taglen + file.blocksize
        if file.offset + file.cfilesize > file.blocksize or end > len(self.data):
            result.append("file %d: block" % number)
        tail = self.data[end - file.taglen:end]
        if not tail.endswith(b"\n"):
            result.append("file %d: block does not end in a line end" % number)
        return result


def unescape(text):
    result = ""
    characters = iter(text)
    for char in characters:
        if char == "\\":
            char = next(characters)
            char = "\n" if char == "n" else char
        result += char
    return result


class Elements:
    """First-level elements of a summary, in the way in which its readers take them."""

    def __init__(self, text):
        self.list = []
        position = 0
        while True:
            start = text.find("<", position)
            end = text.find(">", start) if start >= 0 else -1
            if end < 0 or text[start + 1] == "/":
                return
            if text[start + 1] == "!":
                position = text.find("-->", start)
                if position < 0:
                    return
                position += 3
                continue
            if text[start + 1] == "?":
                position = text.find("?>", start) + 2
                continue
            name = text[start + 1:end]
            depth, position = 1, end + 1
            while depth:
                opening = text.find("<%s>" % name, position)
                closing = text.find("</%s>" % name, position)
                if closing < 0:
                    return
                if 0 <= opening < closing:
                    depth, position = depth + 1, opening + len(name) + 2
                else:
                    depth, position = depth - 1, closing + len(name) + 3
            self.list.append((name, text[end + 1:position - len(name) - 3]))

    def get(self, name):
        """The last element of that name, as a later one replaces an earlier one."""
        return ([text for key, text in self.list if key == name] or [None])[-1]

    def all(self, *names):
        return [(key, text) for key, text in self.list if key in names]


def entities(text):
    for entity, char in (("&lt;", "<"), ("&gt;", ">"), ("&quot;", '"'), ("&apos;", "'"),
                         ("&amp;", "&")):
        text = text.replace(entity, char)
    return text
