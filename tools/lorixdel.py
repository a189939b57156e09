#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Removes the newest step from the history that a document carries. See lorixdel(1)."""

import sys

if sys.version_info < (3, 9):
    sys.stderr.write("***ERROR lorixdel needs Python 3.9 or later\n")
    sys.exit(2)

from lorixtools import VERSION, program, report as reports
from lorixtools.delstep import delete_steps, undo_names
from lorixtools.report import ToolError

HELP = """usage: lorixdel.py [OPTION ...] FILE ...

Removes the newest step from the history that each FILE carries. What is left is,
byte for byte, what was there before that step was added. Instead of file names an
undo description (<DelWorkflowStep>FILE</DelWorkflowStep> ...) can be given.

  -f, --force
        remove the step even though its digest is wrong or more follows behind it
  -p, --pretend
        check everything and say what would be done, but write nothing
  -v, --verbose
        say more
  -q, --quiet
        say nothing but warnings and errors
  --debug
        on a failure show where in the program it arose
  -V, --version
        print the version and end
  -h, --help
        print this text and end
  --
        what follows are names, even if they begin with a hyphen

The exit code is 0 when everything was done, 2 when the call or an input cannot be
used, 3 when the work failed; what was there before is then unchanged."""

SWITCHES = {"-f": "--force", "-p": "--pretend", "-v": "--verbose", "-q": "--quiet",
            "-V": "--version", "-h": "--help"}


def work(arguments, report):
    options = set()
    names = []
    for index, argument in enumerate(arguments):
        if argument == "--":
            names += arguments[index + 1:]
            break
        option = SWITCHES.get(argument, argument)
        if option == "--debug" or option in SWITCHES.values():
            options.add(option)
        elif argument.startswith("-") and argument != "-":
            raise ToolError("unknown option found: %s" % argument)
        else:
            names += undo_names(argument)
    if "--verbose" in options:
        report.verbosity = reports.VERBOSE
    if "--quiet" in options:
        report.verbosity = reports.QUIET
    if "--help" in options:
        print(HELP)
    elif "--version" in options:
        print("lorixdel " + VERSION)
    elif not names:
        raise ToolError("no file was given")
    else:
        delete_steps(names, "--force" in options, "--pretend" in options, report)


if __name__ == "__main__":
    sys.exit(program.run(work))
