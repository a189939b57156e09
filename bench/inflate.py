# SPDX-License-Identifier: BSD-3-Clause
"""Why zlib inflates: another inflater on the same streams, and where it answers otherwise."""

import subprocess
from pathlib import Path


def run(bench):
    program = bench.program("bench_inflate")
    if not Path(program).exists():
        print("inflate    no row: built without libisal-dev")
        return
    lines = subprocess.run([program], stdout=subprocess.PIPE, check=True).stdout.decode().split("\n")
    for name, *numbers in map(str.split, filter(None, lines)):
        if name == "seconds":
            zlib, isal = map(float, numbers)
            bench.row("inflate", "inflating in chunks of 100 000 bytes, with zlib", zlib / isal,
                      "the same with ISA-L", None)
        else:
            runs, otherwise, other_bytes = map(int, numbers)
            bench.row("inflate", f"{name}: streams that ISA-L answers otherwise", otherwise / runs,
                      f"{runs} streams, {other_bytes} with other bytes", None)
