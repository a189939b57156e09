# SPDX-License-Identifier: BSD-3-Clause
"""Comparing histories: the search against the same search done plainly."""

import os
import subprocess


def measured(bench, *arguments, timeout=None):
    """Seconds, peak KiB and cost that bench_tree prints; None after `timeout` seconds."""
    command = [bench.program("bench_tree"), *map(str, arguments)]
    try:
        done = subprocess.run(command, stdout=subprocess.PIPE, check=True, timeout=timeout)
    except subprocess.TimeoutExpired:
        return None
    seconds, memory, costs = done.stdout.split()
    return float(seconds), int(memory), float(costs)


def best(bench, *arguments, repeat=3):
    runs = [measured(bench, *arguments) for _ in range(repeat)]
    return min(run[0] for run in runs), min(run[1] for run in runs), runs[0][2]


def against_plain(bench, steps, renamed, bar):
    case = ("chain", steps, renamed)
    empty = best(bench, "none", *case)[1]
    ours, ours_memory, ours_costs = best(bench, "search", *case)
    plain, plain_memory, plain_costs = best(bench, "plain", *case, repeat=1)
    assert ours_costs == plain_costs, (ours_costs, plain_costs)
    what = f"chains of {steps}, {renamed} titles renamed"
    bench.row("tree", what, ours / plain, f"plain search ({plain:.2f} s)", 1 / bar)
    # What the process needs without any search is taken off on both sides; a page is the least.
    ratio = max(ours_memory - empty, 4) / max(plain_memory - empty, 4)
    bench.row("tree", what + ", memory", ratio,
              f"plain search ({(plain_memory - empty) / 1024:.1f} MiB)", 1 / 30)


def growth(bench, how, shape, steps, edits, what):
    less = best(bench, how, shape, steps, edits)[0]
    more = best(bench, how, shape, 2 * steps, 2 * edits)[0]
    bench.row("tree", what, more / less, f"half as many ({more:.2f} s for all)", 8)


def reach(bench, how, steps, seconds):
    """How many of the steps may be renamed so that the search ends in time."""
    renamed = 0
    while renamed < steps and measured(bench, how, "chain", steps, renamed + 1, timeout=seconds):
        renamed += 1
    return renamed


def nested_container(bench):
    """A container with a step that embeds another, by the real tool."""
    tool = ["python3", bench.tool("lorixadd.py")]
    inner, outer = str(bench.dir / "inner.lorix"), str(bench.dir / "outer.lorix")
    subprocess.run([*tool, "-A", inner, "-s", "title", "inner"], check=True,
                   stdout=subprocess.DEVNULL)
    subprocess.run([*tool, "-A", outer, "-s", "title", "outer", "-i", inner], check=True,
                   stdout=subprocess.DEVNULL)
    return outer


def leftovers(bench):
    outer = nested_container(bench)
    temporary = bench.dir / "tmp"
    temporary.mkdir()
    done = subprocess.run([bench.program("bench_tree"), "trees", outer, "10000"], check=True,
                          stdout=subprocess.PIPE, env={**os.environ, "TMPDIR": str(temporary)})
    early, late = (tuple(map(int, line.split())) for line in done.stdout.splitlines())
    bench.row("tree", "descriptors after 10 000 nested trees", late[0] / early[0], "after 1 000", 1)
    bench.row("tree", "memory after 10 000 nested trees", late[1] / early[1], "after 1 000", 1.05)
    bench.row("tree", "temporary files left (1 is none)", 1 + len(list(temporary.iterdir())),
              "none", 1)


def run(bench):
    against_plain(bench, 40, 4, 50)
    against_plain(bench, 10, 8, 20)
    growth(bench, "search", "chain", 200, 0, "identical chains of 400 steps")
    growth(bench, "quick", "history", 500, 100, "quick match, 1000 steps with 200 edits")
    ours, plain = reach(bench, "search", 20, 10), reach(bench, "plain", 20, 10)
    bench.row("tree", f"chains of 20 in 10 s: {plain} against {ours} renamed", plain / ours,
              "the search", None)
    leftovers(bench)
