# SPDX-License-Identifier: BSD-3-Clause
"""The document that a step is added to: a file that is there, or one made from nothing."""

import os
import stat
import tempfile

from . import container, marker, pdf
from .report import ToolError, reason
from .section import TooLarge

# Furthest place behind the document, in bytes, to which a line of the document
# that looks like an embedded-file marker may send readers.
LONGEST_GAP = 1 << 20


class Root:
    """The document that the step is added to, as it is before."""

    def __init__(self, file, name, new=False):
        self.file = file
        self.new = new
        self.name = name
        self.size = container.size_of(file)
        self.status = os.fstat(file.fileno())
        self.sections = container.chain(file) if container.has_header(file) else []
        first = container.read_at(file, 0, 1 << 16)
        self.eol = b"\r\n" if first[:first.find(b"\n") + 1].endswith(b"\r\n") else b"\n"
        self.is_pdf = pdf.header_offset(file) >= 0
        self.ends_line = self.size == 0 or container.read_at(file, self.size - 1, 1) == b"\n"

    def unchanged(self):
        status = os.fstat(self.file.fileno())
        return (status.st_size, status.st_mtime_ns) == \
            (self.status.st_size, self.status.st_mtime_ns)

    def gap(self):
        """Bytes that must stand between the document and its new section: the
        rest of an unfinished last line, and room for readers whom a line of the
        document that looks like an embedded-file marker sends behind its end."""
        result = b"" if self.ends_line else self.eol
        target = -1
        for _, target in container.files_and_jump(self.file, self.size):
            pass
        if target < self.size or target > marker.LARGEST_FILE:
            return result
        if target - self.size > LONGEST_GAP:
            raise ToolError("%s: holds a line that readers take for an embedded file reaching "
                            "%d bytes beyond the end; they would not see the new section's files"
                            % (self.name, target - self.size))
        if target >= self.size + len(result):
            result += b" " * (target - self.size - len(result)) + self.eol
        return result


def made_root(invocation, report):
    """A document for a step that has none, in a temporary file."""
    texts = [text for text in (invocation.firstpage, invocation.readme) if text]
    if not texts:
        texts = [invocation.step["title"] or "This document carries a history."]
    for text in texts:
        if text.encode("cp1252", "replace").decode("cp1252") != text:
            report.warning("the pages show characters beyond Western Europe's as '?'")
            break
    attributes = {name: marker.carried(text) for name, text in invocation.doc.items()}
    file = tempfile.TemporaryFile()
    file.write(pdf.from_text(texts, attributes))
    file.flush()
    return Root(file, "the document made from nothing", new=True)


def open_root(invocation, replacements):
    """The root document, or None when it is optional and missing."""
    if invocation.root is None:
        return None
    path = invocation.location(invocation.root)
    for replacement in replacements:
        if replacement.target == os.path.realpath(path):
            file = replacement.open_old()
            break
    else:
        try:
            file = open(path, "rb")
        except FileNotFoundError:
            file = None
        except OSError as error:
            raise ToolError("%s: %s" % (path, reason(error)))
    if file is None:
        if not invocation.root_optional:
            raise ToolError("%s: no such file" % path)
        return None
    if not stat.S_ISREG(os.fstat(file.fileno()).st_mode):
        raise ToolError("%s: is not a regular file" % path)
    if container.size_of(file) > marker.LARGEST_FILE:
        raise TooLarge(path)
    return Root(file, path)
