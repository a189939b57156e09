#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Adds a step to the history that a document carries. See lorixadd(1)."""

import os
import sys

if sys.version_info < (3, 9):
    sys.stderr.write("***ERROR lorixadd needs Python 3.9 or later\n")
    sys.exit(2)

from lorixtools import VERSION, program
from lorixtools.addstep import add_step
from lorixtools.options import Reader, help_text


def work(arguments, report):
    reader = Reader(report.warning, sys.stdin.buffer.read, dict(os.environ))
    invocation = reader.read(arguments)
    report.verbosity = invocation.verbosity
    if invocation.help:
        print(help_text())
    elif invocation.version:
        print("lorixadd " + VERSION)
    else:
        add_step(invocation, report)


if __name__ == "__main__":
    sys.exit(program.run(work))
