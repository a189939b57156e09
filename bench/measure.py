# SPDX-License-Identifier: BSD-3-Clause
"""What every row of bench/run is measured with.

A row compares a command of ours with a command of somebody else's on the same
data in the same run, and what is printed is the ratio of the two. The best of
several alternating runs counts on each side, so that a busy machine disturbs
both alike.
"""

import os
import resource
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent


class Bench:
    def __init__(self, build, scratch, repeat=5):
        self.build = Path(build)
        self.dir = Path(scratch)
        self.repeat = repeat
        self.rows = []

    def program(self, name="lorix"):
        """Path of a built program."""
        return str(self.build / "bin" / name)

    def tool(self, name):
        """Path of one of the Python tools."""
        return str(ROOT / "tools" / name)

    def seconds(self, command, **options):
        """Wall time of one run; `command` is a list, or a shell text."""
        start = time.perf_counter()
        status = self._run(command, **options).returncode
        elapsed = time.perf_counter() - start
        if status not in options.get("accept", (0, 1)):
            raise RuntimeError(f"{command}: exit code {status}")
        return elapsed

    def best(self, *commands, repeat=None):
        """Best wall time of each command, run in turns; after one run each to
        warm the page cache."""
        for command in commands:
            self.seconds(command)
        best = [float("inf")] * len(commands)
        for _ in range(repeat or self.repeat):
            for i, command in enumerate(commands):
                best[i] = min(best[i], self.seconds(command))
        return best

    def memory(self, command):
        """Peak resident memory of a command in KiB."""
        with tempfile.NamedTemporaryFile("r", dir=self.dir) as report:
            shell = isinstance(command, str)
            arguments = ["/usr/bin/time", "-f", "%M", "-o", report.name]
            arguments += ["sh", "-c", command] if shell else list(command)
            subprocess.run(arguments, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                           check=False)
            return int(report.read().split()[-1])

    def row(self, area, what, ratio, peer, bar, growth=False):
        """Notes one result. `ratio` is ours divided by the peer's; `bar` is the
        most that it may be, or None where there is none."""
        verdict = "" if bar is None else ("ok" if ratio <= bar else "MISSED")
        self.rows.append((area, what, ratio, peer, bar, verdict))
        limit = "" if bar is None else f"at most {bar:g}"
        print(f"{area:<10} {what:<58} {ratio:9.3f} x {peer:<38} {limit:<14} {verdict}", flush=True)

    def growth(self, area, what, small, large, bar=2.3, repeat=None):
        """Notes how much longer the command `large` takes than `small`, which has
        half as much to do."""
        less, more = self.best(small, large, repeat=repeat)
        self.row(area, what, more / less, "half as much", bar, growth=True)

    def missed(self):
        return [row for row in self.rows if row[5] == "MISSED"]

    @staticmethod
    def _run(command, **options):
        shell = isinstance(command, str)
        return subprocess.run(command, shell=shell, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL, check=False)
