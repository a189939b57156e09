# SPDX-License-Identifier: BSD-3-Clause
"""The tasks that bench/compare counts instructions on: small, the same every time.

make(folder) writes their data; TASKS names each with the arguments of lorix,
which runs in that folder. Starting the program is a task of its own, so that
it can be told from the rest.
"""

import subprocess
import sys
from pathlib import Path

from container import file_marker, numbers, text_lines, write_container
from summary import history

MAKE = Path(__file__).resolve().parent.parent / "scripts" / "make-containers"

TASKS = {
    "start": ["--version"],
    "container: open 8 MiB of lines": ["sections", "lines.lorix"],
    "container: list 3 000 files": ["files", "--json", "members.lorix"],
    "queues: validate 4 MB": ["validate", "-q", "--jobs", "1", "table.lorix"],
    "queues: extract 4 MB": ["extract", "-q", "--jobs", "1", "table.lorix", "-d",
                             "out"],
    "summary: tell 40 steps of 50 files": ["summary", "--json", "steps.lorix"],
    "query: find in 60 documents": [
        "find", "-q", "-l", "--jobs", "1", "-r",
        "a:isfile && b:isfile && a:parentid == b:parentid && a:filesize > b:filesize", "many"],
    "tree: tree of 400 steps": ["tree", "chain.lorix"],
    "tree: diff of 40 and 40 steps": ["diff", "-q", "left.lorix", "right.lorix"],
    "argfile: read 4 000 options": ["args", "step.args"],
    "many: info of 60 documents": ["info", "--json", "-q", "--jobs", "1", "-r", "many"],
}


def make(folder):
    content = numbers(4_000_000)
    write_container(folder / "lines.lorix", text_lines(8 * 1024 * 1024, 3),
                    file_marker("a.txt", b"content\n", False))
    write_container(folder / "members.lorix", [], b"".join(
        file_marker(f"file{i:06}.txt", b"%d\n" % i, False) for i in range(3_000)))
    write_container(folder / "table.lorix", [], file_marker("table.txt", content[:2_000_000], True)
                    + file_marker("stored.txt", content[2_000_000:], False))
    for name, sections, files in (("steps", 40, 50), ("chain", 400, 1), ("left", 40, 2),
                                  ("right", 40, 3)):
        history(folder / f"{name}.lorix", sections, files)
    subprocess.run([sys.executable, str(MAKE), "60", str(folder / "many"), "--bad", "0"],
                   check=True)
    (folder / "step.args").write_text("-A x.pdf -s title 'a step'\n" + "".join(
        f"-i dir/f{i} -f no-embed -a comment 'no {i}'\n" for i in range(2_000)))
