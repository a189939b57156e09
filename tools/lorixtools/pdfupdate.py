# SPDX-License-Identifier: BSD-3-Clause
"""Document attributes of a PDF, set by an incremental update.

The document's own bytes stay as they are: the update is a new information
dictionary and a cross-reference section that leads to it and then back to the
document's own. The program qpdf says what the document holds so far.
"""

import hashlib
import json
import os
import re
import shutil
import subprocess

from . import container, pdf

# Of a trailer; they describe one cross-reference section, not the document.
_OF_THE_TABLE = {"/Prev", "/XRefStm", "/Size", "/Info", "/Type", "/W", "/Index", "/Length",
                 "/Filter", "/DecodeParms", "/ID"}
_REFERENCE = re.compile(r"([0-9]+) ([0-9]+) R$")


class CannotUpdate(Exception):
    """Why the document attributes stay as they are."""


def _ask(path, thing):
    program = shutil.which("qpdf")
    if not program:
        raise CannotUpdate("the program qpdf is needed for that and was not found")
    # Exit code 3 means that the document has faults that qpdf could mend.
    done = subprocess.run([program, "--json=2", "--json-key=qpdf", "--json-object=" + thing,
                           os.path.abspath(path)], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, check=False)
    if done.returncode not in (0, 3):
        message = done.stderr.decode("utf-8", "replace").strip().splitlines()
        raise CannotUpdate(message[-1] if message else "qpdf failed")
    try:
        objects = json.loads(done.stdout.decode("utf-8"))["qpdf"][1]
        return next(iter(objects.values()))["value"] if objects else None
    except (ValueError, LookupError, TypeError):
        raise CannotUpdate("qpdf's answer was not understood")


def _name(text):
    return b"/" + b"".join(b"%c" % byte if 0x21 <= byte < 0x7F and byte not in b"()<>[]{}/%#"
                           else b"#%02X" % byte for byte in text[1:].encode("utf-8"))


def _written(value):
    """qpdf's JSON form of an object as PDF."""
    if value is None:
        return b"null"
    if isinstance(value, bool):
        return b"true" if value else b"false"
    if isinstance(value, (int, float)):
        return repr(value).encode()
    if isinstance(value, list):
        return b"[" + b" ".join(_written(item) for item in value) + b"]"
    if isinstance(value, dict):
        return b"<< " + b" ".join(_name(key) + b" " + _written(item)
                                  for key, item in sorted(value.items())) + b" >>"
    if value.startswith("u:"):
        return pdf.text_string(value[2:])
    if value.startswith("b:"):
        return b"<" + value[2:].encode() + b">"
    if value.startswith("/"):
        return _name(value)
    if _REFERENCE.match(value):
        return value.encode()
    raise CannotUpdate("qpdf's answer was not understood")


class Update:
    """What must be known of a PDF to update it. `number` is its startxref,
    `base` the offset from which it counts."""

    def __init__(self, file, path, base, number):
        self._number = number
        at = container.read_at(file, base + number, 64).lstrip(b"\0\t\n\f\r ")
        self._table = at.startswith(b"xref")
        if not self._table and not re.match(rb"[0-9]+[\0\t\n\f\r ]+[0-9]+[\0\t\n\f\r ]+obj", at):
            raise CannotUpdate("its startxref leads to no cross-reference table")
        self._trailer = _ask(path, "trailer")
        if not isinstance(self._trailer, dict) or "/Root" not in self._trailer \
                or not isinstance(self._trailer.get("/Size"), int):
            raise CannotUpdate("its trailer is damaged")
        if "/Encrypt" in self._trailer:
            raise CannotUpdate("it is encrypted")
        found = _REFERENCE.match(str(self._trailer.get("/Info", "")))
        self._place = (int(found.group(1)), int(found.group(2))) if found else None
        info = _ask(path, "%d,%d" % self._place) if self._place else None
        self._info = info if isinstance(info, dict) else {}

    def make(self, attributes, start, eol):
        """The bytes of an update that sets `attributes` and stands `start`
        bytes behind the document's "%PDF". Returns them and their startxref."""
        size = self._trailer["/Size"]
        number, generation = self._place or (size, 0)
        size = max(size, number + 1)
        info = {_name(key): _written(value) for key, value in self._info.items()}
        for name, key in pdf.INFO_KEYS:
            if name in attributes:
                info.pop(key, None)
                if attributes[name]:
                    info[key] = pdf.text_string(attributes[name])
        body = b"%d %d obj%s<< %s >>%sendobj%s" % (
            number, generation, eol,
            b" ".join(key + b" " + value for key, value in sorted(info.items())), eol, eol)
        trailer = self._new_trailer(body, number, generation)
        if self._table:
            table = eol.join((b"xref", b"%d 1" % number, b"%010d %05d n" % (start, generation)))
            # An entry has 20 bytes with its line end, whatever that is.
            tail = b"\r\n" if eol == b"\r\n" else b" \n"
            tail += b"trailer" + eol + b"<< /Size %d %s >>" % (size, trailer) + eol
            return body + table + tail, start + len(body)
        return body + self._stream(size, number, generation, start, start + len(body), trailer,
                                   eol), start + len(body)

    def _new_trailer(self, body, number, generation):
        entries = {key: _written(value) for key, value in self._trailer.items()
                   if key not in _OF_THE_TABLE}
        entries["/Info"] = b"%d %d R" % (number, generation)
        entries["/Prev"] = b"%d" % self._number
        identity = self._trailer.get("/ID")
        if isinstance(identity, list) and len(identity) == 2:
            # The second half names this state of the document.
            state = hashlib.md5(_written(identity) + body).hexdigest().encode()
            entries["/ID"] = b"[" + _written(identity[0]) + b" <" + state + b">]"
        return b" ".join(_name(key) + b" " + value for key, value in sorted(entries.items()))

    @staticmethod
    def _stream(size, number, generation, start, own, trailer, eol):
        """A cross-reference stream, for a document that has such streams itself."""
        rows = b"".join(b"01%08X%04X" % row for row in ((start, generation), (own, 0))) + b">"
        return b"%d 0 obj%s<< /Type /XRef /Size %d /W [1 4 2] /Index [%d 1 %d 1] " \
            b"/Filter /ASCIIHexDecode /Length %d %s >>%sstream\r\n%s%sendstream%sendobj%s" % (
                size, eol, size + 1, number, size, len(rows), trailer, eol, rows, eol, eol, eol)
