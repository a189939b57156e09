# SPDX-License-Identifier: BSD-3-Clause
"""The syntax of argument files.

Words stand between white space. 'single quotes' take everything as it is,
"double quotes" and plain words know a backslash that takes the next character
as it is, $NAME and ${NAME} (letters and digits) stand for variables outside
single quotes, and # begins a comment that runs to the end of its line. Pieces
that touch make one word.
"""

import re

from .report import ToolError

_TOKENS = re.compile(r"""
      (?P<space>[\r\n\t ]+)
    | (?P<comment>\#[^\r\n]*[\s\S]?)
    | (?P<plain>(?:[^\\'"\#\r\n\t ]|\\[\s\S])+)
    | (?P<single>'[^']*')
    | (?P<double>"(?:[^"\\]|\\[\s\S])*")
    """, re.VERBOSE)
# The run of backslashes is taken from its start only, which keeps the search linear.
_VARIABLE = re.compile(r"(?<!\\)(\\*)\$(?:([A-Za-z0-9]+)|\{([A-Za-z0-9]+)\})")


def _unescape(text):
    return re.sub(r"\\([\s\S])", r"\1", text)


def _expand(text, variables):
    """`text` (outside single quotes) with its variables replaced and its escapes undone."""
    pieces = []
    done = 0
    for found in _VARIABLE.finditer(text):
        if len(found.group(1)) % 2:
            continue  # the dollar is escaped
        pieces.append(_unescape(text[done:found.end(1)]))
        pieces.append(variables.get(found.group(2) or found.group(3), ""))
        done = found.end()
    pieces.append(_unescape(text[done:]))
    return "".join(pieces)


def _place(text, position):
    line = text.count("\n", 0, position) + 1
    return "line %d, column %d" % (line, position - text.rfind("\n", 0, position))


def split(text, variables, name):
    """The arguments in `text`. `variables` maps names to values; an unknown
    name stands for nothing. `name` says in messages where the text comes from."""
    arguments = []
    word = None
    position = 0
    while position < len(text):
        found = _TOKENS.match(text, position)
        if not found:
            what = {"'": "the single quote opened here is never closed",
                    '"': "the double quote opened here is never closed"}.get(
                        text[position], "a backslash ends the text")
            raise ToolError("%s: %s: %s" % (name, _place(text, position), what))
        piece = found.group()
        kind = found.lastgroup
        if kind in ("space", "comment"):
            if word is not None:
                arguments.append(word)
            word = None
        elif kind == "single":
            word = (word or "") + piece[1:-1]
        else:
            word = (word or "") + _expand(piece[1:-1] if kind == "double" else piece, variables)
        position = found.end()
    if word is not None:
        arguments.append(word)
    return arguments


def decode(data, name):
    """An argument file's bytes as text."""
    if b"\0" in data:
        raise ToolError("%s: holds a zero byte, so it is no argument file" % name)
    if data.startswith(b"\xef\xbb\xbf"):
        data = data[3:]
    # What is not UTF-8 is kept in the way in which file names are kept.
    return data.decode("utf-8", "surrogateescape")
