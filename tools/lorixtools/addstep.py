# SPDX-License-Identifier: BSD-3-Clause
"""Adding one step: from an invocation to the files on disk."""

import contextlib
import hashlib
import os
import stat
import time

from . import VERSION, container, document, marker, pdf, pdfupdate, summaryxml
from .report import FAILED, ToolError, reason
from .safefile import Replacement, copy
from .section import SectionWriter, TooLarge

CREATOR = "lorixadd " + VERSION

# Summaries above this size are compressed; below it they stay readable in any editor.
COMPRESS_SUMMARY = 64 * 1024


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
            raise ToolError("%s: changed while the step was being added" % item.location, FAILED)
        while True:
            data = file.read(container.CHUNK)
            if not data:
                break
            yield data
        if os.fstat(file.fileno()).st_mtime_ns != before.st_mtime_ns:
            raise ToolError("%s: changed while it was being read" % item.location, FAILED)


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
        _check_given_digest(item)
        report.detail("%s: %s%s" % (item.location, item.method or "listed only",
                                    ", %s of %s bytes" % (item.stored_size, item.size)
                                    if item.method == "flate" else ", %s bytes" % item.size))


def _copy_root(root, file, name):
    """Writes what stands in front of the section. Returns by how many bytes
    the document's own bytes move."""
    header = b"" if root.sections else marker.HEADER_LINE + root.eol
    if root.size + len(header) > marker.LARGEST_FILE:
        raise TooLarge(name)
    file.write(header)
    if copy(root.file, 0, root.size, file) != root.size or not root.unchanged():
        raise ToolError("%s: changed while it was being read" % root.name, FAILED)
    return len(header)


def _check_room(name, root, items):
    """Refuses early what cannot end below the limit."""
    total = root.size + sum(item.size for item in items if item.entry.flags["embed"]
                            and not item.entry.flags["compress"])
    if total > marker.LARGEST_FILE:
        raise TooLarge(name)


def _embed_summary(writer, invocation, items):
    text = summaryxml.compose(invocation, invocation.root.given if invocation.root else "",
                              text_time(now()), CREATOR, items)
    writer.embed({"filetype": "text/xml", "filename": summaryxml.NAME,
                  "desc": "Summary of this step", "comment": ""}, len(text), [text],
                 len(text) > COMPRESS_SUMMARY)


def _write_trailer(writer, invocation, root, moved, eol, report):
    """For a PDF: an update with the document attributes that were asked for,
    written at once. Returns the lines for behind the section's marker."""
    if not root.is_pdf:
        if invocation.doc:
            report.warning("%s: is no PDF; its document attributes are recorded in the step alone"
                           % root.name)
        return b""
    number = pdf.startxref(root.file, root.sections)
    if number is None:
        report.warning("%s: begins like a PDF but has no startxref at its end" % root.name)
        return b""
    if invocation.doc and not root.new:
        base = pdf.header_offset(root.file)
        try:
            update = pdfupdate.Update(root.file, root.name, base, number)
            attributes = {name: marker.carried(text) for name, text in invocation.doc.items()}
            data, number = update.make(attributes, writer.end - base - moved, eol)
            writer.write(data)
        except pdfupdate.CannotUpdate as error:
            report.warning("%s: the document attributes are recorded in the step alone: %s"
                           % (root.name, error))
    return pdf.trailer(number, eol)


def _write(invocation, root, items, file, name, report):
    """Writes the whole new container to `file`."""
    gap = root.gap()
    moved = _copy_root(root, file, name)
    writer = SectionWriter(file, name, root.eol)
    writer.write(gap)
    _write_files(writer, items, report)
    _embed_summary(writer, invocation, items)
    trailer = _write_trailer(writer, invocation, root, moved, root.eol, report)
    return writer.finish(invocation.step["title"], CREATOR, len(root.sections),
                         root.sections[0] if root.sections else None, trailer)


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
            replacements = [Replacement.open(stack, names[key]) for key in sorted(names)]
        root = document.open_root(invocation, replacements) \
            or document.made_root(invocation, report)
        stack.callback(root.file.close)
        if not root.new and (invocation.firstpage or invocation.readme):
            report.warning("--firstpage and --readme are only for a document made from nothing")
        first = next(iter(names.values()))
        _check_room(first, root, items)
        if invocation.pretend:
            _pretend(names.values(), root, items, report)
            return
        begin, end = _write(invocation, root, items, replacements[0].file, replacements[0].path,
                            report)
        _commit(replacements, end)
        for name in names.values():
            report.info("%s: step %d added, %d files, %d bytes"
                        % (name, len(root.sections) + 1, len(items), end - begin))


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
    root.gap()
    for item in items:
        flags = item.entry.flags
        how = "embedded" + (", compressed" if flags["compress"] else "") if flags["embed"] \
            else "listed only"
        report.info("%s: would be %s (%d bytes)" % (item.location, how, item.size))
    for name in names:
        report.info("%s: step %d would be added" % (name, len(root.sections) + 1))
