# SPDX-License-Identifier: BSD-3-Clause
"""Removing the newest step from a container."""

import contextlib
import os

from . import container, marker
from .report import FAILED, ToolError, reason
from .safefile import Replacement, copy

_OPEN, _CLOSE = "<DelWorkflowStep>", "</DelWorkflowStep>"


def undo_names(argument):
    """The file names in an undo description, or the argument itself. Names
    stand in the description as they are, so only its own words are looked for."""
    if not (argument.startswith(_OPEN) and argument.endswith(_CLOSE)):
        return [argument]
    return argument[len(_OPEN):-len(_CLOSE)].split(_CLOSE + _OPEN)


class Cut:
    """What is kept of a container when its newest section goes."""

    def __init__(self, file, name, force, report):
        self.file = file
        self.name = name
        self.size = container.size_of(file)
        self.sections = container.chain(file) if container.has_header(file) else []
        if not self.sections:
            raise ToolError("%s: carries no history" % name)
        self.section = self.sections[0]
        self.begin = container.section_begin(self.section)
        self.end = container.section_end(self.section)
        self._check(force, report)
        self.front = 0 if self.section.fields["previousmarker"] >= 0 else self._header_length()

    def _check(self, force, report):
        if not 0 <= self.begin <= self.section.start < self.end <= self.size:
            raise ToolError("%s: the newest step's marker names bytes that are not there; "
                            "it cannot be removed" % self.name)
        if len(self.sections) > 1 and max(
                self.sections[1].start, container.section_end(self.sections[1]) - 1) >= self.begin:
            raise ToolError("%s: the newest step's bytes would take the step before along; "
                            "it cannot be removed" % self.name)
        doubts = []
        if container.section_digest(self.file, self.section) \
                != self.section.fields["md5section"]:
            doubts.append("the newest step was changed after it was added")
        if self.end < self.size:
            doubts.append("%d bytes follow behind the newest step" % (self.size - self.end))
        if len(self.sections) == 1 and self.section.fields["previousmarker"] >= 0:
            doubts.append("the step before the newest cannot be found")
        for doubt in doubts:
            if not force:
                raise ToolError("%s: %s (--force removes it all the same)" % (self.name, doubt))
            report.warning("%s: %s" % (self.name, doubt))

    def _header_length(self):
        """Length of the header line that came with the first step."""
        for eol in (b"\n", b"\r\n"):
            line = marker.HEADER_LINE + eol
            if container.read_at(self.file, 0, len(line)) == line and len(line) <= self.begin:
                return len(line)
        return 0

    def told(self, pretend):
        """What was done, or would be, in words."""
        left = len(self.sections) - 1
        return "%s: %s the newest step, \"%s\", %d bytes; %d %s" % (
            self.name, "would remove" if pretend else "removed",
            marker.unescape(self.section.fields["title"]), self.end - self.begin,
            left, "step is left" if left == 1 else "steps are left")

    def write(self, file):
        parts = ((self.front, self.begin), (self.end, self.size))
        for start, end in parts:
            if copy(self.file, start, end, file) != end - start:
                raise ToolError("%s: changed while it was being read" % self.name, FAILED)


def _open(name):
    try:
        return open(name, "rb")
    except OSError as error:
        raise ToolError("%s: %s" % (name, reason(error)))


def delete_steps(names, force, pretend, report):
    """Removes the newest step of each file; all of them are checked before the first is changed."""
    different = {}
    for name in names:
        different.setdefault(os.path.realpath(name), name)
    with contextlib.ExitStack() as stack:
        cuts = []
        for target in sorted(different):
            name = different[target]
            stack.enter_context(_open(name)).close()  # before anything is made beside it
            replacement = None if pretend else Replacement.open(stack, name)
            cut = Cut(stack.enter_context(_open(name)), name, force, report)
            if replacement:
                cut.write(replacement.file)
                replacement.finish()
            cuts.append((cut, replacement))
        for cut, replacement in cuts:
            if replacement:
                replacement.commit()
            report.info(cut.told(pretend))
