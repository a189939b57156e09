# SPDX-License-Identifier: BSD-3-Clause
"""What the tools know of PDF: where a document's cross-reference table starts,
and how to make a document of plain text."""

import re

from . import container, marker

# Readers look for a document's beginning and end in the first and last 1024
# bytes; the header line may have moved the beginning.
EDGE = 1024
HEADER_EDGE = EDGE + len(marker.HEADER_LINE) + 2

_STARTXREF = re.compile(rb"startxref[\x00\t\n\f\r ]+([0-9]{1,10})[\x00\t\n\f\r ]+%%EOF")


def header_offset(file):
    """Offset of "%PDF-", from which a document counts, or -1: no PDF."""
    return container.read_at(file, 0, HEADER_EDGE).find(b"%PDF-")


def startxref(file, sections):
    """The number behind the document's last "startxref", or None. `sections`
    is the file's chain, newest first."""
    end = container.size_of(file)
    for section in sections:
        behind = section.start + section.taglen + 1
        for begin, stop in ((container.section_end(section), end),
                            (behind, container.section_end(section))):
            found = _last_startxref(file, begin, min(stop, end))
            if found is not None:
                return found
        end = max(min(container.section_begin(section), section.start), 0)
    return _last_startxref(file, 0, end)


def _last_startxref(file, begin, end):
    begin = max(begin, end - EDGE, 0)
    if end <= begin:
        return None
    numbers = _STARTXREF.findall(container.read_at(file, begin, end - begin))
    return int(numbers[-1]) if numbers else None


def trailer(number, eol):
    """The lines that lead a reader who starts at the file's end to the table."""
    return eol.join((b"startxref", b"%d" % number, b"%%EOF", b""))


# Pages of text: A4, Courier in a size that sets 80 characters on a line.
_WIDTH, _HEIGHT, _MARGIN = 595, 842, 57
_SIZE, _LEADING = 10, 12
_COLUMNS, _ROWS = 80, 60


def _wrapped(text):
    lines = []
    for line in text.replace("\r\n", "\n").replace("\r", "\n").expandtabs(8).split("\n"):
        while len(line) > _COLUMNS:
            cut = line.rfind(" ", 0, _COLUMNS + 1)
            if cut <= 0 or not line[:cut].strip():
                cut = _COLUMNS
            lines.append(line[:cut].rstrip())
            line = line[cut:].lstrip(" ")
        lines.append(line.rstrip())
    return lines


def _shown(line):
    data = line.encode("cp1252", "replace")
    return b"(" + re.sub(rb"([\\()])", rb"\\\1", data) + b") Tj T*"


def text_string(text):
    """A PDF text string; in hexadecimal, so that it holds no line end."""
    data = text.encode("utf-16-be", "replace")
    return b"<FEFF" + data.hex().upper().encode() + b">"


INFO_KEYS = (("title", b"/Title"), ("author", b"/Author"), ("subject", b"/Subject"),
             ("keywords", b"/Keywords"), ("creator", b"/Creator"), ("producer", b"/Producer"))


def from_text(texts, info, eol=b"\n"):
    """A new document: each of `texts` begins on a page of its own. `info` maps
    document attributes to text."""
    pages = []
    for text in texts:
        lines = _wrapped(text)
        while len(lines) > 1 and not lines[-1]:
            lines.pop()
        pages += [lines[row:row + _ROWS] for row in range(0, len(lines), _ROWS)]
    kids = b" ".join(b"%d 0 R" % (5 + 2 * index) for index in range(len(pages)))
    objects = [b"<< /Type /Catalog /Pages 2 0 R >>",
               b"<< /Type /Pages /Count %d /Kids [%s] >>" % (len(pages), kids),
               b"<< /Type /Font /Subtype /Type1 /BaseFont /Courier /Encoding /WinAnsiEncoding >>",
               b"<< " + b" ".join(key + b" " + text_string(info[name])
                                  for name, key in INFO_KEYS if info.get(name)) + b" >>"]
    for index, lines in enumerate(pages):
        content = b"BT\n/F1 %d Tf\n%d TL\n%d %d Td\n%s\nET" % (
            _SIZE, _LEADING, _MARGIN, _HEIGHT - _MARGIN - _SIZE,
            b"\n".join(_shown(line) for line in lines))
        objects.append(b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 %d %d] /Contents %d 0 R "
                       b"/Resources << /Font << /F1 3 0 R >> >> >>"
                       % (_WIDTH, _HEIGHT, 6 + 2 * index))
        objects.append(b"<< /Length %d >>\nstream\n%s\nendstream" % (len(content), content))
    result = bytearray(b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n")
    table = [b"0000000000 65535 f \n"]
    for number, body in enumerate(objects, 1):
        table.append(b"%010d 00000 n \n" % len(result))
        result += b"%d 0 obj\n%s\nendobj\n" % (number, body)
    start = len(result)
    result += b"xref\n0 %d\n%strailer\n<< /Size %d /Root 1 0 R /Info 4 0 R >>\n" % (
        len(table), b"".join(table), len(table))
    return bytes(result) + trailer(start, b"\n")
