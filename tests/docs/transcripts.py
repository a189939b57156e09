# SPDX-License-Identifier: BSD-3-Clause
"""Code and transcripts in Markdown pages, so that tests can hold them to the truth."""

import re
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def blocks(page, language):
    """The contents of the fenced blocks of a language in a page, in order."""
    text = (ROOT / page).read_text("utf-8")
    return re.findall(rf"^```{language}\n(.*?)^```$", text, re.S | re.M)


def calls(page):
    """Pairs of a shell command and the lines below it, from all console blocks."""
    for block in blocks(page, "console"):
        for call in re.split(r"^\$ ", block, flags=re.M)[1:]:
            command, _, output = call.partition("\n")
            yield command, output


def shows(expected, printed):
    """Whether `expected`, in which a line of "..." stands for lines left out, is
    what was printed."""
    parts = [re.escape(part) for part in re.split(r"^\.\.\.\n", expected, flags=re.M)]
    return re.fullmatch("(?:.*\n)*?".join(parts), printed) is not None
