# SPDX-License-Identifier: BSD-3-Clause
"""Argument files: how reading grows with them, and against another splitter."""

import random

WORDS = 1000000
SMALL = WORDS // 10

# Each makes `count` words of about ten bytes.
KINDS = {
    "plain words": lambda rng, count: (f"word{rng.randrange(10000):04d}x " for _ in range(count)),
    "quoted words": lambda rng, count: (
        rng.choice(("'a {:04d} b' ", '"a {:04d}b" ')).format(rng.randrange(10000))
        for _ in range(count)),
    "variables": lambda rng, count: (f"x${{a}}{rng.randrange(1000):03d} " for _ in range(count)),
    "escapes": lambda rng, count: ("\\a\\b\\ \\$\\\\ " for _ in range(count)),
    "comments": lambda rng, count: (f"w #{rng.randrange(10000000)}\n" for _ in range(count)),
    "pieces of one word": lambda rng, count: ("'abc'\"def\"" for _ in range(count)),
    "one word of dollar signs": lambda rng, count: ("$$$${a$$$$" for _ in range(count)),
}


def write(path, kind, count):
    rng = random.Random(1)
    with open(path, "w", encoding="ascii") as out:
        out.writelines(KINDS[kind](rng, count))
    return path


def write_options(path, words):
    with open(path, "w", encoding="ascii") as out:
        for number in range(words // 8):
            out.write(f"-i dir/f{number} -f no-embed -a comment 'no {number}' -q\n")
    return path


def growth(bench, what, command, small, large):
    """A row on the time per word in ten times as much."""
    empty = write(bench.dir / "empty.args", "plain words", 0)
    base, less, more = bench.best(command + [str(empty)], command + [str(small)],
                                  command + [str(large)])
    # What starting the program takes does not grow.
    ratio = (more - base) / max(less - base, 1e-9) / 10
    bench.row("argfile", f"{what}: time per word in {WORDS} words", ratio,
              f"time per word in {SMALL}", 1.6, growth=True)


def run(bench):
    program = bench.program("bench_argfile")
    for kind in KINDS:
        small = write(bench.dir / "small.args", kind, SMALL)
        large = write(bench.dir / "large.args", kind, WORDS)
        growth(bench, kind, [program, "split"], small, large)
    small = write_options(bench.dir / "small.args", SMALL)
    large = write_options(bench.dir / "large.args", WORDS)
    growth(bench, "options of a step", [program, "read"], small, large)

    words = write(bench.dir / "words.args", "quoted words", WORDS)
    peer = ["python3", "-c", "import shlex, sys; print(len(shlex.split(open(sys.argv[1]).read())))",
            str(words)]
    ours, theirs = bench.best([program, "split", str(words)], peer, repeat=2)
    bench.row("argfile", f"{WORDS} quoted words into arguments", ours / theirs,
              "Python's shlex.split", 0.2)
