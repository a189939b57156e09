# SPDX-License-Identifier: BSD-3-Clause
"""Writing one section: embedded files, the summary, then the section's marker line.

The marker stands behind the files because readers look for the newest section
backwards from the end of the file, line by line: whatever an embedded file
holds, they meet the marker first.
"""

import hashlib
import itertools
import zlib

from . import container, marker
from .report import FAILED, ToolError

CHUNK = 1 << 20


class TooLarge(ToolError):
    def __init__(self, name):
        super().__init__("%s: would be larger than %d bytes, which no reader takes"
                         % (name, marker.LARGEST_FILE))


class SectionWriter:
    """Appends a section to `file`, which ends with what the section follows."""

    def __init__(self, file, name, eol):
        self._file = file
        self._name = name
        self._eol = eol
        self._padding = 0
        self._begin = self._end = container.size_of(file)

    @property
    def end(self):
        return self._end

    def write(self, data):
        if self._end + len(data) > marker.LARGEST_FILE:
            raise TooLarge(self._name)
        self._file.write(data)
        self._end += len(data)

    def embed(self, fields, size, chunks, compress):
        """Embeds the bytes that `chunks` yields, `size` in all. `fields` holds
        the texts of the marker line, not yet escaped. Returns (filesize,
        md5file, cfilesize, md5cfile)."""
        texts = {name: marker.escape(marker.carried(text)) for name, text in fields.items()}
        texts["compression"] = "flate" if compress else "none"
        # The marker's numbers are known when the data has been written; until
        # then its place is kept, as long as the marker can become.
        most = _deflate_bound(size) if compress else size
        digests = (marker.NO_DIGEST, marker.NO_DIGEST if compress else "")
        longest = self._fit(texts, (size, digests[0], most, digests[1]), None, most)
        room = len(longest.encode()) + len(self._eol)
        if room > marker.LONGEST_LINE:
            raise ToolError("%s: its name and texts are too long to be embedded"
                            % fields["filename"])
        start = self._end
        self.write(b" " * room)
        result = self._store(size, chunks, compress)
        self._pad()
        text = self._fit(texts, result, room, result[2]).encode()
        self._file.seek(start)
        self._file.write(text.ljust(room - len(self._eol)) + self._eol)
        self._file.seek(self._end)
        return result

    def _fit(self, texts, result, room, stored):
        """The marker line's text for a file stored in `stored` bytes that begin
        `room` bytes behind the marker's start (None: directly behind the line).

        Readers count the marker's text in characters and all else in bytes;
        `offset` makes up for the difference, and for blanks behind the marker.
        Both numbers count from the marker's end and so depend on their own
        length; where no length fits exactly, one is filled up with zeros."""
        filesize, md5file, cfilesize, md5cfile = result
        values = dict(texts, filesize=filesize, md5file=md5file, cfilesize=cfilesize,
                      md5cfile=md5cfile, offset="", blocksize="")
        bare = marker.compose(marker.FILE_PREFIX, marker.FILE_FIELDS, values)
        characters, size, eol = marker.units(bare), len(bare.encode()), len(self._eol)
        best = None
        for digits in itertools.product(range(1, 11), repeat=2):
            length = characters + sum(digits)
            line = size + sum(digits) + eol
            offset = (line if room is None else room) - length
            padding = (length if room is None else self._padding) + eol
            numbers = (offset, offset + stored + padding)
            spare = [width - len(str(value)) for value, width in zip(numbers, digits)]
            if min(spare) < 0 or (room is not None and line > room):
                continue
            if best is None or sum(spare) < best[0]:
                best = (sum(spare), digits, numbers, padding - eol)
            if best[0] == 0:
                break
        _, digits, numbers, self._padding = best
        values["offset"], values["blocksize"] = (
            str(value).zfill(width) for value, width in zip(numbers, digits))
        return marker.compose(marker.FILE_PREFIX, marker.FILE_FIELDS, values)

    def _store(self, size, chunks, compress):
        content, stored = hashlib.md5(), hashlib.md5()
        deflate = zlib.compressobj() if compress else None
        begin = self._end
        read = 0
        for data in chunks:
            read += len(data)
            if read > size:
                break
            content.update(data)
            self._put(deflate.compress(data) if compress else data, stored if compress else None)
        if read != size:
            raise ToolError("its size changed while it was being read", FAILED)
        if compress:
            self._put(deflate.flush(), stored)
        return (size, content.hexdigest(), self._end - begin,
                stored.hexdigest() if compress else "")

    def _put(self, data, digest):
        if data:
            self.write(data)
            if digest is not None:
                digest.update(data)

    def _pad(self):
        """Readers go on from a place that lies the marker's own length before
        the end of the block, and look at no line before the next line end. So
        the block ends in one line of at least that length: nothing of the
        stored bytes is ever taken for a marker, and the next marker is seen."""
        self.write(b" " * self._padding + self._eol)

    def finish(self, title, creator, index, previous, trailer):
        """Writes the section's marker line, chained to the marker `previous`
        (None for the first section), and `trailer` behind it. Returns the
        section's begin and end."""
        start = self._end
        left = start + 1 - self._begin
        values = {"version": "1.0", "creator": marker.escape(marker.carried(creator)),
                  "title": marker.escape(marker.carried(title)), "left": left, "index": index,
                  "md5section": marker.NO_DIGEST, "previousmd5": "", "previousmarker": ""}
        if previous:
            values["previousmd5"] = previous.fields["md5section"]
            values["previousmarker"] = start - previous.start
        size = 0
        line = b""
        while left - 1 + len(line) + len(trailer) != size or not line:
            size = left - 1 + len(line) + len(trailer)
            values["size"] = size
            line = marker.compose(marker.SECTION_PREFIX, marker.SECTION_FIELDS,
                                  values).encode() + self._eol
        if len(line) > marker.LONGEST_LINE:
            raise ToolError("the step's title is too long")
        self.write(line)
        self.write(trailer)
        self._file.flush()
        digest = hashlib.md5()
        container.feed(self._file, self._begin, self._end, digest.update)
        values["md5section"] = digest.hexdigest()
        self._file.seek(start)
        self._file.write(marker.compose(marker.SECTION_PREFIX, marker.SECTION_FIELDS,
                                        values).encode())
        self._file.seek(self._end)
        return self._begin, self._end


def _deflate_bound(size):
    """No stream that zlib makes of `size` bytes is longer."""
    return size + (size >> 8) + 4096
