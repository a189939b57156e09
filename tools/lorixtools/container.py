# SPDX-License-Identifier: BSD-3-Clause
"""Reading containers, in the way in which every reader of the format does it:
sections from the end of the file, embedded files from its start."""

import hashlib
import io

from . import marker

CHUNK = 1 << 20


def read_at(file, start, length):
    """Exactly the bytes [start, start + length) that the file has."""
    file.seek(start)
    return file.read(length)


def size_of(file):
    return file.seek(0, io.SEEK_END)


def _line_at(file, start, end):
    """The line from `start` up to and including its line feed; None when it is
    too long for a marker."""
    file.seek(start)
    line = file.readline(min(end - start, marker.LONGEST_LINE + 1))
    return None if len(line) > marker.LONGEST_LINE else line


def has_header(file):
    """Whether the header line is among the first ten lines. A line with a zero
    byte ends the search, as it does for readers."""
    file.seek(0)
    for _ in range(10):
        front = b""
        while not front.endswith(b"\n"):
            piece = file.readline(CHUNK)
            if not piece:
                break
            if b"\0" in piece:
                return False
            front = front + piece if len(front) < CHUNK else front[:CHUNK] + piece[-1:]
        if front.startswith(marker.HEADER):
            return True
        if not front:
            return False
    return False


def _find_last(file, needle, end):
    """Offset of the last `needle` that ends at or before `end`, or -1."""
    while end >= len(needle):
        start = max(end - CHUNK, 0)
        found = read_at(file, start, end - start).rfind(needle)
        if found >= 0:
            return start + found
        if start == 0:
            break
        end = start + len(needle) - 1
    return -1


def _line_start(file, position):
    found = _find_last(file, b"\n", position)
    return found + 1


def _section_in_line(line, start, anywhere=True):
    """The section marker of `line`: at its front, or else at the first place
    where one begins. `start` is the line's offset in both cases."""
    if line is None:
        return None
    if line.startswith(marker.SECTION_PREFIX):
        return marker.parse_section(line, start)
    found = line.find(marker.SECTION_PREFIX) if anywhere and b"\0" not in line else -1
    return marker.parse_section(line[found:], start) if found >= 0 else None


def newest_section(file):
    """The section marker nearest to the end of the file, or None."""
    size = end = size_of(file)
    while True:
        found = _find_last(file, marker.SECTION_PREFIX, end)
        if found < 0:
            return None
        start = _line_start(file, found)
        section = _section_in_line(_line_at(file, start, size), start)
        if section:
            return section
        end = start


def previous_section(file, section):
    """The section marker that `section` names as its predecessor, or None."""
    if section.fields["previousmarker"] < 0:
        return None
    size = size_of(file)
    start = section.start - section.fields["previousmarker"]
    if not 0 <= start < size:
        return None
    found = marker.parse_section(_line_at(file, start, size) or b"", start)
    if found:
        return found
    # A link that is a little off is repaired from the lines around.
    start = _line_start(file, start)
    for _ in range(4):
        if start > 0:
            start = _line_start(file, start - 1)
    for _ in range(9):
        line = _line_at(file, start, size)
        if line is None or not line:
            return None
        found = _section_in_line(line, start)
        if found:
            return found
        start += len(line)
    return None


def chain(file):
    """The sections, newest first. A chain that leads back into itself ends there."""
    sections = []
    seen = set()
    section = newest_section(file)
    while section and (section.start, section.fields["previousmarker"]) not in seen:
        seen.add((section.start, section.fields["previousmarker"]))
        sections.append(section)
        section = previous_section(file, section)
    return sections


def section_begin(section):
    return section.start + 1 - section.fields["left"]


def section_end(section):
    return section_begin(section) + section.fields["size"]


def section_digest(file, section):
    """MD5 of the section's bytes with its own digest taken as zeros, or an
    empty text when the section does not lie within the file."""
    begin, end = section_begin(section), section_end(section)
    line = _line_at(file, section.start, size_of(file))
    if begin < 0 or begin > section.start or end > size_of(file) or line is None \
            or section.start + len(line) > end:
        return ""
    digest = hashlib.md5()
    feed(file, begin, section.start, digest.update)
    own = ("[md5section:%s]" % section.fields["md5section"]).encode()
    digest.update(line.replace(own, ("[md5section:%s]" % marker.NO_DIGEST).encode()))
    feed(file, section.start + len(line), end, digest.update)
    return digest.hexdigest()


def feed(file, start, end, take):
    """Hands the bytes [start, end) to `take`, chunk by chunk; returns how many there were."""
    file.seek(start)
    done = start
    while done < end:
        data = file.read(min(CHUNK, end - done))
        if not data:
            break
        take(data)
        done += len(data)
    return done - start


def _next_file_line(file, start, size):
    """Offset of the next line from `start` on (a line's start) that begins like
    an embedded-file marker, or -1."""
    needle = b"\n" + marker.FILE_PREFIX
    position = start
    overlap = b"\n"
    # In a container the next marker mostly follows at once.
    length = 4096
    file.seek(start)
    while position < size:
        data = file.read(length)
        length = min(2 * length, CHUNK)
        if not data:
            break
        window = overlap + data
        found = window.find(needle)
        if found >= 0:
            return position - len(overlap) + found + 1
        position += len(data)
        overlap = window[-(len(needle) - 1):]
    return -1


def files_and_jump(file, size):
    """The embedded-file markers that a reader finds in the first `size` bytes,
    as a generator of (marker, target): after each marker the reader goes on
    behind the line in which the offset `target` lies. The last target may lie
    beyond `size`; it is for the caller to judge."""
    start = 0
    while True:
        start = _next_file_line(file, start, size)
        if start < 0:
            return
        line = _line_at(file, start, size)
        found = marker.parse_file(line, start) if line else None
        if not found:
            start += 1
            start = _after_line(file, start)
            continue
        target = start + 1 + found.fields["blocksize"]
        yield found, target
        if target >= size:
            return
        start = _after_line(file, target)


def _after_line(file, position):
    """Start of the line after the one in which `position` lies."""
    file.seek(position)
    while True:
        piece = file.readline(CHUNK)
        if not piece or piece.endswith(b"\n"):
            return file.tell()
