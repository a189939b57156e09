# SPDX-License-Identifier: BSD-3-Clause
"""Folders of many small containers: time and memory when their number doubles."""

import subprocess
import sys
from pathlib import Path

MAKE = Path(__file__).resolve().parent.parent / "scripts" / "make-containers"


def run(bench):
    for count in (5_000, 10_000):
        subprocess.run([sys.executable, str(MAKE), str(count), str(bench.dir / f"many{count}")],
                       check=True)
    small, large = (str(bench.dir / f"many{count}") for count in (5_000, 10_000))
    for command in (["info"], ["summary"], ["validate"], ["tree"]):
        call = [bench.program(), *command, "--json", "-q", "--jobs", "1", "-r"]
        bench.growth("many", f"{command[0]} --json of 5 000 containers, doubled",
                     [*call, small], [*call, large], repeat=3)
    call = [bench.program(), "summary", "--json", "-q", "-r"]
    growth = (bench.memory([*call, large]) - bench.memory([*call, small])) / 1024
    bench.row("many", "summary --json, memory above that for half as many (MiB)", growth, "1 MiB",
              4)
    one, two, sums = bench.best([*call, "--jobs", "1", large], [*call, "--jobs", "2", large],
                                f"find {large} -type f -print0 | xargs -0 md5sum")
    bench.row("many", "summary --json of 10 000 containers, 1 job", one / sums, "md5sum of all",
              None)
    bench.row("many", "summary --json of 10 000 containers, 2 jobs", two / one, "1 job", 0.75)
