# SPDX-License-Identifier: BSD-3-Clause
"""The text lines that carry a history: header, section markers, embedded-file markers."""

import re
from collections import namedtuple

HEADER = b"%<--! $LORIX_PDF [version:1.0]"
HEADER_LINE = HEADER + b"-->"
SECTION_PREFIX = b"%<--! $LORIX_SECTION"
FILE_PREFIX = b"%<--! $LORIX_EMBEDDEDFILE_BEGIN"
NO_DIGEST = "0" * 32

# Readers hold offsets in signed 32-bit numbers.
LARGEST_FILE = 2147483647
# Longer lines are not looked at as markers.
LONGEST_LINE = 16 * 1024 * 1024

SECTION_FIELDS = ("version", "creator", "title", "left", "size", "index",
                  "md5section", "previousmd5", "previousmarker")
FILE_FIELDS = ("filetype", "filename", "desc", "comment", "compression", "filesize",
               "cfilesize", "blocksize", "offset", "md5file", "md5cfile")
_NUMBERS = {"left", "size", "index", "previousmarker",
            "filesize", "cfilesize", "blocksize", "offset"}
_DIGESTS = {"md5section", "previousmd5", "md5file", "md5cfile"}


def _pattern(keyword, fields):
    parts = []
    for field in fields:
        if field in _NUMBERS:
            value = "([0-9]*)"
        elif field in _DIGESTS:
            value = "(|[a-f0-9]{32})"
        else:
            value = r"([^\]\\]*(?:\\[\\\]n][^\]\\]*)*)"
        parts.append(r"\[%s:%s\]" % (field, value))
    return re.compile(re.escape(keyword.decode()) + " " + "".join(parts) + "-->")


_SECTION = _pattern(SECTION_PREFIX, SECTION_FIELDS)
_FILE = _pattern(FILE_PREFIX, FILE_FIELDS)

# `start` is the 0-based offset of the marker line, `taglen` the length of the
# marker's text in UTF-16 characters less one, which is how readers count it.
Marker = namedtuple("Marker", "start taglen fields")


def units(text):
    """Length of `text` in UTF-16 characters."""
    return len(text.encode("utf-16-le", "surrogatepass")) // 2


def carried(text):
    """`text` as far as marker lines and the summary can carry it: every line
    break is a line feed, and control characters other than line feed and tab,
    half surrogates (from file names that are not UTF-8) and the two
    noncharacters that XML forbids become U+FFFD."""
    text = text.replace("\r\n", "\n").replace("\r", "\n")
    return re.sub("[\x00-\x08\x0b-\x1f\x7f\ud800-\udfff\ufffe\uffff]", "\ufffd", text)


def escape(text):
    """The form of a text field in a marker line."""
    return text.replace("\\", "\\\\").replace("]", "\\]").replace("\n", "\\n")


def unescape(text):
    return re.sub(r"\\(.)", lambda found: "\n" if found.group(1) == "n" else found.group(1), text)


def compose(prefix, names, values):
    """The text of a marker; text fields in `values` are already escaped."""
    fields = "".join("[%s:%s]" % (name, values[name]) for name in names)
    return "%s %s-->" % (prefix.decode(), fields)


def number(text):
    """A numeric field as readers take it: -1 when empty, 0 beyond 32 bits."""
    if not text:
        return -1
    value = int(text) if len(text) < 4000 else LARGEST_FILE + 1
    return value if value <= LARGEST_FILE else 0


def _parse(pattern, names, line, start):
    if len(line) > LONGEST_LINE or b"\0" in line:
        return None
    found = pattern.match(line.decode("utf-8", "replace"))
    if not found:
        return None
    fields = {name: number(value) if name in _NUMBERS else value
              for name, value in zip(names, found.groups())}
    return Marker(start, units(found.group()) - 1, fields)


def parse_section(line, start):
    """The section marker at the front of `line` (bytes), or None."""
    return _parse(_SECTION, SECTION_FIELDS, line, start)


def parse_file(line, start):
    """The embedded-file marker at the front of `line` (bytes), or None."""
    return _parse(_FILE, FILE_FIELDS, line, start)
