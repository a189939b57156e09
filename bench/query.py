# SPDX-License-Identifier: BSD-3-Clause
"""Find: the search against plain backtracking, many small files against grep,
and how reading a query grows with its length."""

import math
import subprocess

from summary import HEADER, embedded, text_of_step, whole_file, write_section

CANDIDATES = 2000


def printed(program, *arguments):
    result = subprocess.run([program, *map(str, arguments)], check=True, capture_output=True,
                            text=True)
    return float(result.stdout)


def best(bench, program, *arguments):
    return min(printed(program, *arguments) for _ in range(bench.repeat))


def searching(bench):
    program = bench.program("bench_query")
    # The plain search is run where it ends, and what it takes for the whole
    # history follows from how it grows there.
    for names, small, large in ((3, 148, 296), (4, 111, 222)):
        few, many = (printed(program, "plain", names, n) for n in (small, large))
        exponent = math.log(many / few) / math.log(large / small)
        plain = many * (CANDIDATES / large) ** exponent
        mine = best(bench, program, "search", names, CANDIDATES)
        bench.row("query", f"{names} names over {CANDIDATES} candidates, no match", mine / plain,
                  f"plain search, growing n^{exponent:.1f}", 0.001)


def container(path, number, needle):
    """A container of two sections and six files, some 20 KB."""
    with open(path, "wb") as out:
        out.write(HEADER + b"a document\n" * 300)
        previous = None
        for section in range(2):
            blocks, step = [], []
            for i in range(2):
                name = f"{needle if section == i == 1 else 'data'} {number}.txt"
                content = (f"line {i} of {name}\n" * 120).encode()
                blocks.append(embedded(name, content))
                step.append(whole_file(name, content))
            blocks.append(embedded("ws_summary.xml", text_of_step("".join(step)).encode(), True))
            previous = write_section(out, blocks, f"step {section}", previous)


def files(bench):
    folder = bench.dir / "many"
    folder.mkdir()
    for i in range(10_000):
        container(folder / f"{i:05}.lorix", i, "needle" if i % 100 == 0 else "data")
    grep = ["grep", "-rl", "needle", str(folder)]
    find = [bench.program(), "find", "-r", "-l", "--jobs", "1", "needle", str(folder)]
    listed = [sorted(subprocess.run(command, check=True, capture_output=True, text=True)
                     .stdout.splitlines()) for command in (grep, find)]
    if listed[0] != listed[1] or len(listed[0]) != 100:
        raise RuntimeError(f"{len(listed[0])} files by grep, {len(listed[1])} by find")
    size = sum(path.stat().st_size for path in folder.iterdir()) / 10_000_000
    theirs, mine = bench.best(grep, find)
    bench.row("query", f"find a word in 10 000 containers of {size:.0f} KB", mine / theirs,
              "grep -rl for the word", 8)
    names = sorted(str(path) for path in folder.iterdir())
    (bench.dir / "half.list").write_text("\n".join(names[:5_000]))
    (bench.dir / "all.list").write_text("\n".join(names))
    small, large = ([bench.program(), "find", "-l", "--jobs", "1", "needle", "--files-from",
                     str(bench.dir / f"{which}.list")] for which in ("half", "all"))
    bench.growth("query", "find a word in 5 000 containers, doubled", small, large)


def reading(bench):
    program = bench.program("bench_query")
    for mode in ("lex", "compile"):
        small, large = (best(bench, program, mode, size) for size in (1_000_000, 2_000_000))
        bench.row("query", f"{mode} a query of 1 MB of conjunctions, doubled", large / small,
                  "half as much", 2.3, growth=True)


def run(bench):
    searching(bench)
    files(bench)
    reading(bench)
