#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Checks that hold for the sources as a whole: check_sources.py CHECK ROOT

registered  every tests/**/tst_*.cpp is registered beside it with lorix_test() or a kin of it
layering    parts of the library include only the parts below them, and no
            file reaches itself through its includes
spdx        every source file says its licence in its first line
"""
import os
import re
import sys

# Which parts a part may include beside itself; never back, no circles.
BELOW = {
    "runner": set(),
    "container": {"runner"},
    "queues": {"container", "runner"},
    "summary": {"container", "runner"},
    "tree": {"queues", "summary", "container", "runner"},
    "query": {"summary", "container", "runner"},
    "argfile": {"runner"},
}
# These stand above everything: users include them, the library does not.
TOP = {
    "lorix.h": set(),
    "runner/lorixrunner.h": {
        "runner/lorixrunner.cpp",
        "runner/lorixaddrunner.h",
        "runner/lorixaddrunner.cpp",
        "runner/lorixdelrunner.h",
        "runner/lorixdelrunner.cpp",
        "lorix.h",
    },
}
RUNNERS = re.compile(r"runner/lorix\w*runner\.(h|cpp)$")
SOURCE = re.compile(r"(\.(h|cpp|py|sh|cmake)|CMakeLists\.txt)$")
SKIPPED = {"build", ".git", ".cache", "__pycache__", "node_modules"}


def files(root):
    """Every file below root as a path with slashes, sorted."""
    found = []
    for folder, folders, names in os.walk(root):
        folders[:] = sorted(f for f in folders if f not in SKIPPED)
        for name in names:
            path = os.path.relpath(os.path.join(folder, name), root)
            found.append(path.replace(os.sep, "/"))
    return sorted(found)


def read(root, path):
    with open(os.path.join(root, path), encoding="utf-8", errors="replace") as file:
        return file.read()


def registered(root):
    """Yields a complaint for each test that nothing runs."""
    for path in files(root):
        folder, name = os.path.split(path)
        if not path.startswith("tests/") or not re.fullmatch(r"tst_\w+\.cpp", name):
            continue
        lists = folder + "/CMakeLists.txt"
        here = os.path.exists(os.path.join(root, lists))
        commands = re.sub(r"#.*", "", read(root, lists)) if here else ""
        if not re.search(r"\blorix_(?:\w+_)?test\(\s*%s\b" % re.escape(name[:-4]), commands):
            yield "%s: not registered in %s" % (path, lists)
        parent = folder
        while parent != "tests":
            parent, child = os.path.split(parent)
            upper = re.sub(r"#.*", "", read(root, parent + "/CMakeLists.txt"))
            if not re.search(r"add_subdirectory\(\s*%s\s*\)" % re.escape(child), upper):
                yield "%s: folder %s is not added in %s" % (path, child, parent)


def includes(root):
    """For each file of the library the library headers that it includes."""
    graph = {}
    for path in files(os.path.join(root, "lorix")):
        if path.endswith((".h", ".cpp")):
            text = read(root, "lorix/" + path)
            graph[path] = re.findall(r'^\s*#\s*include\s*[<"]lorix/([^>"]+)[>"]', text, re.M)
            for local in re.findall(r'^\s*#\s*include\s*"(?!lorix/)([^"]+)"', text, re.M):
                if not local.endswith(".moc"):
                    graph[path].append(os.path.normpath(os.path.dirname(path) + "/" + local))
    return graph


def allowed(path, header):
    """Whether path may include header."""
    if header in TOP and path not in TOP[header]:
        return False
    if "/" not in header:
        return header != "lorix.h"
    if "/" not in path:
        return path == "lorix.h"
    part, other = path.split("/")[0], header.split("/")[0]
    if RUNNERS.search(path):
        return other in ("runner", "argfile")
    return not RUNNERS.search(header) and (other == part or other in BELOW.get(part, set()))


def circles(graph):
    """Yields each circle of includes once, as the files that it goes through."""
    done = set()
    for start in sorted(graph):
        path, branches = [start], [iter(graph[start])]
        while branches:
            header = next(branches[-1], None)
            if header is None:
                done.add(path.pop())
                branches.pop()
            elif header in path:
                yield path[path.index(header):] + [header]
            elif header not in done and header in graph:
                path.append(header)
                branches.append(iter(graph[header]))


def layering(root):
    graph = includes(root)
    for path in sorted(graph):
        for header in graph[path]:
            if not os.path.exists(os.path.join(root, "lorix", header)):
                yield "lorix/%s: includes %s, which is not there" % (path, header)
            elif not allowed(path, header):
                yield "lorix/%s: may not include %s" % (path, header)
    for circle in circles(graph):
        yield "includes go in a circle: " + " -> ".join(circle)
    for path in files(os.path.join(root, "tools")):
        if path.endswith(".py") and re.search(r"^\s*import lorix\b", read(root, "tools/" + path), re.M):
            yield "tools/%s: the tools stand alone" % path


def spdx(root):
    line = "SPDX-License-Identifier: BSD-3-Clause"
    for path in files(root):
        with open(os.path.join(root, path), "rb") as file:
            start = file.read(300).decode("utf-8", "replace").split("\n")
        script = start[0].startswith("#!")
        if not script and not SOURCE.search(path):
            continue
        if line not in start[1 if script and len(start) > 1 else 0]:
            yield "%s: no licence in its first line" % path


def main(arguments):
    if len(arguments) != 2 or arguments[0] not in ("registered", "layering", "spdx"):
        print(__doc__, file=sys.stderr)
        return 2
    complaints = list(globals()[arguments[0]](arguments[1]))
    for complaint in complaints:
        print(complaint)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
