# SPDX-License-Identifier: BSD-3-Clause
"""Messages and failures.

Programs that run the tools read their output line by line: a line that begins
with "***ERROR" is an error, one that begins with "***WARNING" a warning, all
others are information. A message is therefore always exactly one line.
"""

import sys

QUIET, NORMAL, VERBOSE = 0, 1, 2

# Exit codes besides 0.
BAD_CALL = 2  # the call or an input cannot be used; nothing was changed
FAILED = 3  # the work itself failed; what was there before is still there
INTERRUPTED = 130


class ToolError(Exception):
    """Ends the run with a message and an exit code."""

    def __init__(self, message, code=BAD_CALL):
        super().__init__(message)
        self.code = code


def printable(text):
    """`text` on one line, with what would steer a terminal written as escapes."""
    shown = []
    for char in str(text):
        value = ord(char)
        if value < 0x20 or 0x7F <= value < 0xA0 or 0xD800 <= value < 0xE000 \
                or value in (0x2028, 0x2029):
            shown.append("\\x%02x" % value if value < 0x100 else "\\u%04x" % value)
        else:
            shown.append(char)
    return "".join(shown)


def reason(error):
    """The system's words for an OSError, without the file name, which messages give first."""
    return error.strerror or error.__class__.__name__


class Report:
    """Writes messages: information to standard output, the rest to standard error."""

    def __init__(self, verbosity=NORMAL):
        self.verbosity = verbosity
        self.warnings = 0

    @staticmethod
    def _write(stream, line):
        # A reader that went away must not end the work half way.
        try:
            encoding = getattr(stream, "encoding", None) or "ascii"
            stream.write(line.encode(encoding, "backslashreplace").decode(encoding) + "\n")
            stream.flush()
        except (OSError, ValueError):
            pass

    def detail(self, text):
        if self.verbosity >= VERBOSE:
            self._write(sys.stdout, printable(text))

    def info(self, text):
        if self.verbosity >= NORMAL:
            self._write(sys.stdout, printable(text))

    def warning(self, text):
        self.warnings += 1
        self._write(sys.stderr, "***WARNING " + printable(text))

    def error(self, text):
        self._write(sys.stderr, "***ERROR " + printable(text))
