# SPDX-License-Identifier: BSD-3-Clause
"""The page that bench/run --write makes of its rows."""

import os
import platform
import re
import subprocess
from pathlib import Path

HERE = Path(__file__).resolve().parent
NO_AREAS = {"measure", "report", "workloads"}

HEAD = """<!-- SPDX-License-Identifier: BSD-3-Clause -->
<!-- Written by bench/run --write; do not edit. -->
# How fast

Each row divides what lorix takes by what another program takes for the same data in the same run,
so that 0.5 is half of the other's time and 2 is double; where memory is compared, the row says so.
The best of several runs in turns counts on both sides. Rows that say *half as much* compare lorix
with itself on half the work: 2 is growth in proportion. A bar is the most that a row may be;
`bench/run` ends with exit code 1 where one is missed. Times themselves are not given: they tell
more of the machine than of the program. Where other work ran on the machine meanwhile (*load*
below), rows on numbers of jobs say too much: two threads get two shares.

`bench/run` measures again, `bench/run --write` writes this page. Whether a change makes something
slower is better told by counting instructions, which noise does not touch: `bench/compare` builds
the state before the change and the present one, counts on small fixed tasks of every area, and
ends with exit code 1 where one takes over 3 % more.
"""


def first_line(*command):
    try:
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              check=False)
    except OSError:
        return "not there"
    lines = [line.strip() for line in done.stdout.splitlines() if line.strip()]
    return lines[0] if lines else "unknown"


def found(pattern, text, default="unknown"):
    match = re.search(pattern, text, re.M)
    return match.group(1).strip() if match else default


def qt_version():
    for path in Path("/usr/lib").glob("*/pkgconfig/Qt6Core.pc"):
        return found(r"^Version: (.*)$", path.read_text())
    return "unknown"


def machine(build):
    """Pairs of what it is and how it is on this machine."""
    cpuinfo = Path("/proc/cpuinfo").read_text()
    memory = int(found(r"^MemTotal:\s*(\d+)", Path("/proc/meminfo").read_text(), "0"))
    cache = (Path(build) / "CMakeCache.txt").read_text()
    yield "processor", found(r"^model name\s*:(.*)$", cpuinfo)
    yield "cores", str(os.cpu_count())
    yield "memory", f"{memory / 1024 ** 2:.0f} GiB"
    yield "system", f"{platform.system()} {platform.release()}, " + found(
        r'^PRETTY_NAME="(.*)"$', Path("/etc/os-release").read_text())
    yield "compiler", first_line(found(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", cache), "--version")
    yield "build", found(r"^CMAKE_BUILD_TYPE:\w+=(.*)$", cache) + ", Qt " + qt_version()
    yield "load", f"{os.getloadavg()[2]:.1f} jobs on average in the last quarter of an hour"
    yield "peers", "; ".join([
        first_line("grep", "--version"), first_line("md5sum", "--version"),
        first_line("unzip", "-v").split(" of ")[0], first_line("qpdf", "--version"),
        first_line("pdfdetach", "-v"), first_line("python3", "--version")])


def cell(text):
    return text.replace("|", "\\|")


def page(bench):
    lines = [HEAD, "## The machine", "", "| | |", "| --- | --- |"]
    lines += [f"| {what} | {cell(how)} |" for what, how in machine(bench.build)]
    lines += ["", "## The rows"]
    area = None
    for name, what, ratio, peer, bar, verdict in bench.rows:
        if name != area:
            lines += ["", f"### {name}", "", "| what | ratio | against | bar | |",
                      "| --- | ---: | --- | ---: | --- |"]
            area = name
        limit = "" if bar is None else f"{bar:g}"
        shown = f"{ratio:.3g}" if ratio >= 0.0005 else "below 0.0005"
        lines.append(f"| {cell(what)} | {shown} | {cell(peer)} | {limit} | {verdict} |")
    rest = sorted({path.stem for path in HERE.glob("*.py")} - NO_AREAS - {row[0] for row in bench.rows})
    if rest:
        lines += ["", f"Not in this run: {', '.join(rest)}; `bench/run {' '.join(rest)}` prints them."]
    return "\n".join(lines) + "\n"
