# SPDX-License-Identifier: BSD-3-Clause
"""Adding one step: from an invocation to the files on disk."""

import contextlib
import hashlib
import os
import stat
import time

from . import VERSION, container, marker, pdf, summaryxml
from .report import FAILED, ToolError, reason
from .safefile import Replacement, copy
from .section import SectionWriter, TooLarge

CREATOR = "lorixadd " + VERSION

# Summaries above this size are compressed; below it they stay readable in any editor.
COMPRESS_SUMMARY = 64 * 1024

# Furthest place behind the document, in bytes, to which a line of the document
# that looks like an embedded-file marker may send readers.
LONGEST_GAP = 1 << 20


class Item:
    """One file of the step, as it was found and written."""

    def __init__(self, entry, location):
        self.entry = entry
        self.location = location
        self.size = ""
        self.modified = ""
        self.md5 = ""
        self.method = ""
        self.stored_size = ""
        self.stored_md5 = ""
        self.status = None


def text_time(seconds):
    """A time as the summaries carry it. SOURCE_DATE_EPOCH, which stands for
    "now" in builds that must come out the same again, also asks for UTC."""
    fields = time.gmtime(seconds) if "SOURCE_DATE_EPOCH" in os.environ \
        else time.localtime(seconds)
    zone = "+0000" if "SOURCE_DATE_EPOCH" in os.environ else time.strftime("%z", fields)
    return time.strftime("%Y-%m-%d %H:%M:%S ", fields) + zone


def now():
    epoch = os.environ.get("SOURCE_DATE_EPOCH")
    if epoch is None:
        return time.time()
    try:
        return int(epoch)
    except ValueError:
        raise ToolError("SOURCE_DATE_EPOCH is no number of seconds: %s" % epoch)


def find_files(invocation, report):
    """The step's files that are there, checked; nothing is read yet."""
    items = []
    for entry in invocation.files:
        item = Item(entry, invocation.location(entry.path))
        if not entry.filename:
            raise ToolError("%s: is a directory's name, not a file's" % entry.path.given)
        given = entry.attributes["md5file"].lower()
        if given and not (len(given) == 32 and all(c in "0123456789abcdef" for c in given)):
            raise ToolError("%s: md5file is not an MD5 digest: %s" % (entry.path.given, given))
        try:
            item.status = os.stat(item.location)
        except FileNotFoundError:
            if not entry.flags["optional"]:
                raise ToolError("%s: no such file (-f optional lets it be missing)"
                                % item.location)
            report.info("%s: is missing and left out" % item.location)
            continue
        except OSError as error:
            raise ToolError("%s: %s" % (item.location, reason(error)))
        if not stat.S_ISREG(item.status.st_mode):
            raise ToolError("%s: is not a regular file" % item.location)
        if entry.flags["embed"] and item.status.st_size > marker.LARGEST_FILE:
            raise TooLarge(item.location)
        if not os.access(item.location, os.R_OK):
            raise ToolError("%s: Permission denied" % item.location)
        item.size = item.status.st_size
        item.modified = text_time(item.status.st_mtime)
        for text in (entry.filename, entry.filepath):
            if marker.carried(text) != text:
                report.warning("%s: the name holds characters that cannot be carried; "
                               "they are replaced" % item.location)
        items.append(item)
    return items


def _chunks(item):
    """The file's bytes; it must still be the file that was found."""
    with open(item.location, "rb") as file:
        before = os.fstat(file.fileno())
        if (before.st_dev, before.st_ino, before.st_size, before.st_mtime_ns) != \
                (item.status.st_dev, item.status.st_ino, item.status.st_size,
                 item.status.st_mtime_ns):
            raise ToolError("it changed while the step was being added", FAILED)
        while True:
            data = file.read(container.CHUNK)
            if not data:
                break
            yield data
        if os.fstat(file.fileno()).st_mtime_ns != before.st_mtime_ns:
            raise ToolError("it changed while it was being read", FAILED)


def _digest(item):
    digest = hashlib.md5()
    for data in _chunks(item):
        digest.update(data)
    return digest.hexdigest()


def _check_given_digest(item):
    given = item.entry.attributes["md5file"].lower()
    if given and item.md5 != given:
        raise ToolError("%s: its MD5 digest is %s, not %s as given"
                        % (item.location, item.md5, given))


def _write_files(writer, items, report):
    for item in items:
        entry = item.entry
        try:
            if entry.flags["embed"]:
                fields = {"filetype": entry.attributes["filetype"], "filename": entry.filename,
                          "desc": entry.attributes["description"],
                          "comment": entry.attributes["comment"]}
                compress = entry.flags["compress"]
                item.size, item.md5, item.stored_size, item.stored_md5 = writer.embed(
                    fields, item.size, _chunks(item), compress)
                item.method = "flate" if compress else "none"
            elif entry.flags["automd5"]:
                item.md5 = _digest(item)
            else:
                item.md5 = entry.attributes["md5file"].lower()
        except TooLarge:
            raise
        except ToolError as error:
            if str(error).startswith("it"):
                raise ToolError("%s: %s" % (item.location, error), error.code)
            raise
        _check_given_digest(item)
        report.detail("%s: %s%s" % (item.location, item.method or "listed only",
                                    ", %s of %s bytes" % (item.stored_size, item.size)
                                    if item.method == "flate" else ", %s bytes" % item.size))


class Root:
    """The document that the step is added to, as it is before."""

    def __init__(self, file, name):
        self.file = file
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


def _made_root(invocation, report):
    """A document for a step that has none."""
    texts = [text for text in (invocation.firstpage, invocation.readme) if text]
    if not texts:
        texts = [invocation.step["title"] or "This document carries a history."]
    for text in texts:
        if text.encode("cp1252", "replace").decode("cp1252") != text:
            report.warning("the pages show characters beyond Western Europe's as '?'")
            break
    return pdf.from_text(texts, invocation.doc)


def _copy_root(root, made, file, name):
    """Writes what stands in front of the section. Returns by how many bytes
    the document's own bytes move."""
    if root is None:
        file.write(marker.HEADER_LINE + b"\n" + made)
        return 0
    header = b"" if root.sections else marker.HEADER_LINE + root.eol
    if root.size + len(header) > marker.LARGEST_FILE:
        raise TooLarge(name)
    file.write(header)
    if copy(root.file, 0, root.size, file) != root.size or not root.unchanged():
        raise ToolError("%s: changed while it was being read" % root.name, FAILED)
    return len(header)


def _check_room(name, root, made, items):
    """Refuses early what cannot end below the limit."""
    total = root.size if root else len(made)
    total += sum(item.size for item in items
                 if item.entry.flags["embed"] and not item.entry.flags["compress"])
    if total > marker.LARGEST_FILE:
        raise TooLarge(name)


def _write(invocation, root, made, items, file, name, report):
    """Writes the whole new container to `file`."""
    gap = root.gap() if root else b""
    _copy_root(root, made, file, name)
    file.flush()
    eol = root.eol if root else b"\n"
    writer = SectionWriter(file, name, eol)
    writer.write(gap)
    _write_files(writer, items, report)
    previous = root.sections[0] if root and root.sections else None
    text = summaryxml.compose(invocation, invocation.root.given if invocation.root else "",
                              text_time(now()), CREATOR, items)
    writer.embed({"filetype": "text/xml", "filename": summaryxml.NAME,
                  "desc": "Summary of this step", "comment": ""}, len(text), [text],
                 len(text) > COMPRESS_SUMMARY)
    trailer = b""
    if root is None or root.is_pdf:
        number = pdf.startxref(root.file, root.sections) if root else \
            int(made.rsplit(b"startxref\n", 1)[1].split()[0])
        if number is None:
            report.warning("%s: begins like a PDF but has no startxref at its end" % root.name)
        else:
            trailer = pdf.trailer(number, eol)
    index = len(root.sections) if root else 0
    return writer.finish(invocation.step["title"], CREATOR, index, previous, trailer)


def _open_root(invocation, replacements):
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


def add_step(invocation, report):
    """Does what `invocation` asks for."""
    names = {}
    for path in invocation.outputs:
        names.setdefault(os.path.realpath(invocation.location(path)), invocation.location(path))
    if not names:
        raise ToolError("no file to write was given (-A FILE or -O FILE)")
    items = find_files(invocation, report)
    with contextlib.ExitStack() as stack:
        if invocation.pretend:
            replacements = []
        else:
            # In one order everywhere, and each is either had at once or not at all.
            replacements = [stack.enter_context(Replacement(names[key])) for key in sorted(names)]
        root = _open_root(invocation, replacements)
        if root:
            stack.callback(root.file.close)
        made = None if root else _made_root(invocation, report)
        if root and (invocation.firstpage or invocation.readme):
            report.warning("--firstpage and --readme are only for a document made from nothing")
        first = next(iter(names.values()))
        _check_room(first, root, made, items)
        if invocation.pretend:
            _pretend(names.values(), root, items, report)
            return
        begin, end = _write(invocation, root, made, items, replacements[0].file,
                            replacements[0].path, report)
        _commit(replacements, end)
        for name in names.values():
            report.info("%s: step %d added, %d files, %d bytes"
                        % (name, len(root.sections) + 1 if root else 1, len(items), end - begin))


def _commit(replacements, size):
    first = replacements[0]
    for other in replacements[1:]:
        if copy(first.file, 0, size, other.file) != size:
            raise ToolError("%s: could not be read back" % first.path, FAILED)
    for replacement in replacements:
        replacement.finish()
    for replacement in replacements:
        replacement.commit()


def _pretend(names, root, items, report):
    if root:
        root.gap()
    for item in items:
        flags = item.entry.flags
        how = "embedded" + (", compressed" if flags["compress"] else "") if flags["embed"] \
            else "listed only"
        report.info("%s: would be %s (%d bytes)" % (item.location, how, item.size))
    for name in names:
        report.info("%s: step %d would be added" % (name, len(root.sections) + 1 if root else 1))
