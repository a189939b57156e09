#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Installs into a temporary folder, moves that elsewhere and uses it from outside.

consumer.py BUILD-FOLDER COMPILER FLAGS

A tiny project is configured with CMake's package, and the same program is
compiled with what pkg-config tells; both must run and read a container. The
programs must find the library and the tools where they are now.
"""
import glob
import json
import os
import shlex
import shutil
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
CONTAINER = (
    b"%<--! $LORIX_PDF [version:1.0]\n"
    b"%<--! $LORIX_EMBEDDEDFILE_BEGIN [filetype:][filename:a][desc:][comment:]"
    b"[compression:none][filesize:3][cfilesize:3][blocksize:5][offset:1][md5file:][md5cfile:]-->\n"
    b"abc\n"
    b"%<--! $LORIX_SECTION [version:1.0][creator:][title:][left:1][size:1][index:0]"
    b"[md5section:][previousmd5:][previousmarker:]-->\n")
EXPECTED = "lorixlib 1.83.0.2990 of Jun 21 2013\nopened, 1 sections, 1 files\n"


def run(command, **more):
    print("+", " ".join(command), flush=True)
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE, **more).stdout


def check(program, container, libraries):
    environment = dict(os.environ, LD_LIBRARY_PATH=libraries)
    answer = run([program, container], env=environment)
    if answer != EXPECTED:
        sys.exit("%s answered:\n%s\nexpected:\n%s" % (program, answer, EXPECTED))


def only(prefix, name):
    """The path of the one file of that name below the prefix."""
    found = glob.glob(prefix + "/**/" + name, recursive=True)
    if len(found) != 1:
        sys.exit("%s was installed %d times" % (name, len(found)))
    return found[0]


def check_with_cmake(prefix, folder, compiler, flags, container):
    outside = os.path.join(folder, "outside")
    run(["cmake", "-S", HERE, "-B", outside, "-G", "Ninja", "-DCMAKE_PREFIX_PATH=" + prefix,
         "-DCMAKE_CXX_COMPILER=" + compiler, "-DCMAKE_CXX_FLAGS=" + flags])
    run(["cmake", "--build", outside])
    check(os.path.join(outside, "consumer"), container, "")


def check_with_pkg_config(prefix, folder, compiler, flags, container):
    environment = dict(os.environ)
    environment["PKG_CONFIG_PATH"] = ":".join(
        filter(None, [os.path.dirname(only(prefix, "lorix.pc")), os.environ.get("PKG_CONFIG_PATH")]))
    told = run(["pkg-config", "--cflags", "--libs", "lorix"], env=environment)
    program = os.path.join(folder, "consumer")
    run([compiler] + shlex.split(flags) + [os.path.join(HERE, "main.cpp"), "-o", program] +
        shlex.split(told))
    check(program, container, os.path.dirname(only(prefix, "liblorix.so.1")))


def check_programs(prefix, folder):
    """The programs as they are called, with nothing in the environment that helps."""
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("LD_LIBRARY_PATH", "PYTHONPATH")}
    environment.update(QT_QPA_PLATFORM="offscreen", PYTHONDONTWRITEBYTECODE="1")
    bin_folder = os.path.join(prefix, "bin")
    lorix = os.path.join(bin_folder, "lorix")
    document = os.path.join(folder, "made.lorix")
    source = os.path.join(folder, "input.txt")
    with open(source, "w", encoding="ascii") as file:
        file.write("some text\n")

    def call(*command):
        return run(list(command), env=environment)

    call(lorix, "--version")
    call(lorix, "add", "--", "-A", document, "-s", "title", "First", "-i", source)
    call(os.path.join(bin_folder, "lorixadd"), "-A", document, "-s", "title", "Second")
    call(lorix, "validate", document)
    call(lorix, "del", document)
    steps = json.loads(call(lorix, "--json", "summary", document))["steps"]
    if [step["title"] for step in steps] != ["First"]:
        sys.exit("the tools left these steps: %s" % steps)
    call(lorix, "extract", document, "-d", os.path.join(folder, "out"), "--verify")
    if call("cat", os.path.join(folder, "out", "input.txt")) != "some text\n":
        sys.exit("what was extracted is not what was added")
    call(os.path.join(bin_folder, "lorixdel"), "--version")
    if os.path.exists(os.path.join(bin_folder, "lorix-viewer")):
        call(os.path.join(bin_folder, "lorix-viewer"), "--version")
        call("desktop-file-validate", only(prefix, "lorix-viewer.desktop"))


def check_data(prefix):
    """What is not run, but read by others, is there and says what it should."""
    share = os.path.join(prefix, "share")
    json.loads(run(["cat", os.path.join(share, "lorix", "lorix-1.schema.json")]))
    pages = sorted(glob.glob(os.path.join(share, "man", "man1", "*")))
    if len(pages) < 3:
        sys.exit("manual pages are missing: %s" % pages)
    for page in pages:
        told = subprocess.run(["man", "--warnings", "-l", page], check=True, text=True,
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE).stderr
        if told:
            sys.exit("man complains about %s:\n%s" % (page, told))
    for name in ("bash-completion/completions/lorix", "zsh/site-functions/_lorix",
                 "fish/vendor_completions.d/lorix.fish"):
        if "validate" not in run(["cat", os.path.join(share, name)]):
            sys.exit("%s completes nothing" % name)


def check_no_traces(prefix, *folders):
    """No file that was installed names a folder of the build or of the first prefix."""
    for path in glob.glob(prefix + "/**/*", recursive=True):
        if os.path.islink(path) and not os.path.exists(path):
            sys.exit("%s leads nowhere" % path)
        if not os.path.isfile(path):
            continue
        with open(path, "rb") as file:
            content = file.read()
        if content[:4] == b"\x7fELF":
            content = run(["readelf", "--dynamic", path]).encode()
        for folder in folders:
            if os.fsencode(folder) in content:
                sys.exit("%s names %s" % (path, folder))


def main(build, compiler, flags):
    with tempfile.TemporaryDirectory() as folder:
        container = os.path.join(folder, "container")
        with open(container, "wb") as file:
            file.write(CONTAINER)
        first = os.path.join(folder, "first")
        prefix = os.path.join(folder, "somewhere", "else")
        run(["cmake", "--install", build, "--prefix", first])
        os.mkdir(os.path.dirname(prefix))
        shutil.move(first, prefix)

        check_no_traces(prefix, first, build)
        if os.path.exists(os.path.join(prefix, "bin", "lorix")):
            check_programs(prefix, folder)
            check_data(prefix)
        check_with_cmake(prefix, folder, compiler, flags, container)
        check_with_pkg_config(prefix, folder, compiler, flags, container)
    print("what was installed works from outside, wherever it is moved")


if __name__ == "__main__":
    main(*sys.argv[1:4])
