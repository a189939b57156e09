#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Installs the library into a temporary folder and uses it from outside.

consumer.py BUILD-FOLDER COMPILER FLAGS

A tiny project is configured with CMake's package, and the same program is
compiled with what pkg-config tells; both must run and read a container.
"""
import glob
import os
import shlex
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


def main(build, compiler, flags):
    with tempfile.TemporaryDirectory() as folder:
        prefix = os.path.join(folder, "prefix")
        container = os.path.join(folder, "container")
        with open(container, "wb") as file:
            file.write(CONTAINER)
        run(["cmake", "--install", build, "--prefix", prefix])
        config = glob.glob(prefix + "/**/lorixConfig.cmake", recursive=True)
        package = glob.glob(prefix + "/**/lorix.pc", recursive=True)
        library = glob.glob(prefix + "/**/liblorix.so.1", recursive=True)
        for name, found in (("lorixConfig.cmake", config), ("lorix.pc", package),
                            ("liblorix.so.1", library)):
            if len(found) != 1:
                sys.exit("%s was installed %d times" % (name, len(found)))
        libraries = os.path.dirname(library[0])

        outside = os.path.join(folder, "outside")
        run(["cmake", "-S", HERE, "-B", outside, "-G", "Ninja", "-DCMAKE_PREFIX_PATH=" + prefix,
             "-DCMAKE_CXX_COMPILER=" + compiler, "-DCMAKE_CXX_FLAGS=" + flags])
        run(["cmake", "--build", outside])
        check(os.path.join(outside, "consumer"), container, libraries)

        environment = dict(os.environ)
        environment["PKG_CONFIG_PATH"] = ":".join(
            filter(None, [os.path.dirname(package[0]), os.environ.get("PKG_CONFIG_PATH")]))
        told = run(["pkg-config", "--cflags", "--libs", "lorix"], env=environment)
        program = os.path.join(folder, "consumer")
        run([compiler] + shlex.split(flags) + [os.path.join(HERE, "main.cpp"), "-o", program] +
            shlex.split(told))
        check(program, container, libraries)
    print("the installed library works from outside")


if __name__ == "__main__":
    main(*sys.argv[1:4])
